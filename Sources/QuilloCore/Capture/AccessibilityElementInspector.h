#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/AccessibilityTextReader.h"

namespace quillo {

/// What one element says about itself.
struct AccessibilityElementInspection {
  std::string role;
  std::optional<std::string> subrole;
  std::optional<ArtifactRect> frame;
  bool isProtected = false;
  AdvertisedAttributeNames attributeNames;
  std::vector<AccessibilityAttribute> attributes;  ///< in the order read
};

/// Reads elements one by one. Whether an element is protected is decided before anything of its text is asked for.
class AccessibilityElementInspector {
 public:
  /// Both arguments outlive this.
  AccessibilityElementInspector(AccessibilitySession& session, AccessibilityCaptureState& state)
      : session_(session), state_(state), textReader_(session, state) {}

  AccessibilityElementInspection inspect(AccessibilityElement element, std::int64_t nodeID, bool inheritedProtection);

 private:
  void readAttributesInto(AccessibilityElementInspection& inspection, AccessibilityElement element, std::int64_t nodeID,
                          bool readsText, bool defersTextFallback);
  void readFullTextInto(AccessibilityElementInspection& inspection, AccessibilityElement element, std::int64_t nodeID);
  bool storeFullText(AccessibilityElementInspection& inspection, AccessibilityElement element, std::int64_t nodeID);
  void readActionsInto(AccessibilityElementInspection& inspection, AccessibilityElement element, std::int64_t nodeID);

  std::optional<AccessibilityAttributeValue> convert(AccessibilityValue value, std::string_view name,
                                                     const AccessibilityElementInspection& inspection,
                                                     std::int64_t nodeID);
  std::optional<AccessibilityAttributeValue> storeStrings(std::vector<std::string> texts, std::string_view name,
                                                          std::int64_t nodeID);

  AccessibilitySession& session_;
  AccessibilityCaptureState& state_;
  AccessibilityTextReader textReader_;
};

}  // namespace quillo
