#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

/// Members of an element, and how many more there are that were not asked for.
struct AccessibilityMembers {
  std::vector<AccessibilityElement> members;
  std::int64_t omittedCount = 0;
};

/// Reads the members of elements, page by page.
class AccessibilityStructureReader {
 public:
  /// Both arguments outlive this.
  AccessibilityStructureReader(AccessibilitySession& session, AccessibilityCaptureState& state)
      : session_(session), state_(state) {}

  /// The members of all structural attributes that the element advertises, each member once; at most `maximumCount`
  /// are asked for of each attribute.
  AccessibilityMembers children(AccessibilityElement element, const AdvertisedAttributeNames& advertised,
                                std::int64_t maximumCount, std::int64_t nodeID);

  /// How many members the element has, without reading more of them than telling them apart needs.
  std::int64_t childCount(AccessibilityElement element, const AdvertisedAttributeNames& advertised,
                          std::int64_t nodeID);

  /// The members of one attribute.
  AccessibilityMembers elementArray(AccessibilityElement element, std::string_view attribute, std::int64_t maximumCount,
                                    std::optional<std::int64_t> nodeID);

 private:
  AccessibilityMembers distinctMembers(AccessibilityElement element, std::span<const std::string_view> attributes,
                                       std::int64_t maximumCount, std::int64_t nodeID);
  AccessibilityMembers wholeArray(AccessibilityElement element, std::string_view attribute, std::int64_t maximumCount,
                                  std::optional<std::int64_t> nodeID);
  void readPages(AccessibilityElement element, std::string_view attribute, std::int64_t count,
                 std::optional<std::int64_t> nodeID, std::vector<AccessibilityElement>& members);
  void addStructuralWarning(std::string_view code, std::string_view message, std::optional<std::int64_t> nodeID,
                            std::string_view attribute);

  AccessibilitySession& session_;
  AccessibilityCaptureState& state_;
};

}  // namespace quillo
