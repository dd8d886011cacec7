#pragma once

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

/// A session whose every call begins and ends with a look at the control, so that no caller can forget it. Throws what
/// AccessibilityCaptureControl::checkpoint throws.
class CheckpointingSession final : public AccessibilitySession {
 public:
  /// Both arguments outlive this.
  CheckpointingSession(AccessibilitySession& session, const AccessibilityCaptureControl& control)
      : session_(session), control_(control) {}

  AccessibilityResult<AccessibilityElement> applicationElement(std::int32_t processIdentifier) override;
  AccessibilityResult<std::int32_t> processIdentifier(AccessibilityElement element) override;
  void setMessagingTimeout(AccessibilityElement element, double seconds) override;
  AccessibilityResult<std::vector<std::string>> attributeNames(AccessibilityElement element) override;
  AccessibilityResult<std::vector<AccessibilityResult<AccessibilityValue>>> multipleAttributeValues(
      AccessibilityElement element, std::span<const std::string_view> names) override;
  AccessibilityResult<AccessibilityValue> attributeValue(AccessibilityElement element, std::string_view name) override;
  AccessibilityResult<std::int64_t> attributeValueCount(AccessibilityElement element, std::string_view name) override;
  AccessibilityResult<std::vector<AccessibilityValue>> attributeValues(AccessibilityElement element,
                                                                       std::string_view name, std::int64_t index,
                                                                       std::int64_t maximumCount) override;
  AccessibilityResult<std::vector<std::string>> parameterizedAttributeNames(AccessibilityElement element) override;
  AccessibilityResult<AccessibilityValue> parameterizedAttributeValue(AccessibilityElement element,
                                                                      std::string_view name,
                                                                      const AccessibilityValue& parameter) override;
  AccessibilityResult<std::vector<std::string>> actionNames(AccessibilityElement element) override;
  void willRead(std::span<const AccessibilityElement> upcoming) override;
  std::vector<std::string> captureWarnings() override;

 private:
  template <class Call>
  auto between(Call call);

  AccessibilitySession& session_;
  const AccessibilityCaptureControl& control_;
};

}  // namespace quillo
