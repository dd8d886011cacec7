#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloLinux/Accessibility/AtspiApplication.h"
#include "QuilloLinux/Accessibility/AtspiAttributeMapping.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiConnections.h"
#include "QuilloLinux/Accessibility/AtspiElements.h"
#include "QuilloLinux/Accessibility/AtspiNodeReader.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// A reading over the accessibility bus. The first hint makes it read the whole window in bulk; the serial walk is then
/// answered from the records, and what is still unknown is read when it is asked for.
class AtspiSession final : public AccessibilitySession {
 public:
  /// Borrows a connection for its lifetime. Without one every call answers that accessibility is off.
  AtspiSession(std::shared_ptr<AtspiConnections> connections, const WindowCaptureTarget& target,
               std::shared_ptr<const AccessibilityCaptureControl> control,
               std::function<void(const AtspiStatistics&)> statisticsObserver = {});
  AtspiSession(const AtspiSession&) = delete;
  AtspiSession& operator=(const AtspiSession&) = delete;
  ~AtspiSession() override;

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
  AccessibilityResult<const AtspiMappedElement*> mapped(AccessibilityElement element);
  AccessibilityResult<const std::vector<AccessibilityElement>*> children(AccessibilityElement element);
  AccessibilityResult<AccessibilityValue> applicationValue(std::string_view name);
  AccessibilityResult<AccessibilityValue> windowNumber(AccessibilityElement element);
  bool isApplication(AccessibilityElement element) const;

  std::function<void(const AtspiStatistics&)> statisticsObserver_;
  std::shared_ptr<AtspiConnections> connections_;
  std::unique_ptr<AtspiBus> bus_;
  WindowCaptureTarget target_;
  std::shared_ptr<const AccessibilityCaptureControl> control_;
  AtspiObjectTable objects_;
  std::optional<AtspiNodeReader> reader_;
  std::optional<AtspiElements> elements_;
  std::optional<AtspiApplication> application_;
  std::optional<std::optional<AccessibilityElement>> recognizedWindow_;  // empty until it was looked for
  bool hasReadWindow_ = false;
};

}  // namespace quillo
