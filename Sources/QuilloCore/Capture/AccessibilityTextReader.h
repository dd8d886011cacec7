#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

/// How much of a text the limits let be read, in UTF-16 units.
struct AccessibilityTextAllowance {
  std::int64_t units = 0;
  AccessibilityTruncationReason cutReason = AccessibilityTruncationReason::attributeValueLimit;
};

/// Reads the complete text of elements through ranges. Texts that come back incomplete are discarded.
class AccessibilityTextReader {
 public:
  /// Units asked for in one message.
  static constexpr std::int64_t maximumChunkLength = 65536;

  /// Both arguments outlive this.
  AccessibilityTextReader(AccessibilitySession& session, AccessibilityCaptureState& state)
      : session_(session), state_(state) {}

  bool supportsStringForRange(AccessibilityElement element, std::int64_t nodeID);

  /// Empty when the element has none or they cannot be listed, which is recorded.
  std::vector<std::string> parameterizedNames(AccessibilityElement element, std::int64_t nodeID);

  /// The element's text from its start, as much of `length` UTF-16 units as the limits allow, a cut recorded; nothing
  /// when nothing may be read or the reading failed, which is recorded.
  std::optional<std::string> copyFullText(AccessibilityElement element, std::int64_t length, std::int64_t nodeID);

  /// What the limits leave of a text of `length` units.
  AccessibilityTextAllowance allowance(std::int64_t length) const;
  void addTextTruncation(AccessibilityTruncationReason reason, std::int64_t nodeID, std::int64_t omittedCount);
  void addIncompleteTextIssue(std::int64_t nodeID, std::string_view attribute, std::int64_t receivedCount,
                              std::int64_t requestedCount);
  void addUnreadableTextIssue(AccessibilityErrorCode code, std::int64_t nodeID, std::string_view attribute);
  void addUnboundedMarkerIssue(std::int64_t nodeID, bool wasExposed);

 private:
  AccessibilityResult<std::string> string(AccessibilityElement element, std::int64_t location, std::int64_t length);
  bool isSurrogatePair(AccessibilityElement element, std::int64_t location);

  AccessibilitySession& session_;
  AccessibilityCaptureState& state_;
};

}  // namespace quillo
