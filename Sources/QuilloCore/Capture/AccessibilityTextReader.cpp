#include "QuilloCore/Capture/AccessibilityTextReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "QuilloCore/Support/Utf16.h"

namespace quillo {
namespace {

constexpr std::string_view stringForRange = "AXStringForRange";
constexpr std::size_t astralByteCount = 4;  // of a code point that takes a surrogate pair

bool endsWithAstral(std::string_view text) {
  constexpr unsigned char firstAstralLeadByte = 0xF0;
  return text.size() >= astralByteCount &&
         static_cast<unsigned char>(text[text.size() - astralByteCount]) >= firstAstralLeadByte;
}

}  // namespace

bool AccessibilityTextReader::supportsStringForRange(AccessibilityElement element, std::int64_t nodeID) {
  return std::ranges::count(parameterizedNames(element, nodeID), stringForRange) > 0;
}

std::vector<std::string> AccessibilityTextReader::parameterizedNames(AccessibilityElement element,
                                                                     std::int64_t nodeID) {
  auto names = session_.parameterizedAttributeNames(element);
  if (names) return std::move(*names);
  if (!meansAbsence(names.error())) {
    state_.addWarning(names.error(), "Could not list parameterized attributes.", nodeID, std::nullopt);
  }
  return {};
}

AccessibilityTextAllowance AccessibilityTextReader::allowance(std::int64_t length) const {
  const std::int64_t budget = std::max<std::int64_t>(state_.remainingCharacterCount(), 0);
  const std::int64_t attributeLimit = state_.configuration().maximumCharactersPerAttribute;
  const std::int64_t units = std::min(attributeLimit, std::min(budget, length));
  const bool budgetIsSmaller = units < 1 || budget < attributeLimit;
  return {std::max<std::int64_t>(units, 0), budgetIsSmaller ? AccessibilityTruncationReason::characterLimit
                                                            : AccessibilityTruncationReason::attributeValueLimit};
}

std::optional<std::string> AccessibilityTextReader::copyFullText(AccessibilityElement element, std::int64_t length,
                                                                 std::int64_t nodeID) {
  state_.checkpoint();
  const auto [units, cutReason] = allowance(length);
  std::int64_t keptUnits = units;
  std::string text;
  bool isComplete = units > 0;
  for (std::int64_t location = 0; isComplete && location < keptUnits;) {
    const std::int64_t requestedCount = std::min(maximumChunkLength, keptUnits - location);
    const auto chunk = string(element, location, requestedCount);
    if (!chunk) {
      addUnreadableTextIssue(chunk.error(), nodeID, stringForRange);
      isComplete = false;
      break;
    }
    const std::int64_t receivedCount = utf16Length(*chunk);
    std::int64_t acceptedCount = receivedCount;
    if (receivedCount == requestedCount + 1 && location + requestedCount < length && endsWithAstral(*chunk)) {
      // The application completed the surrogate pair that our boundary cut: it belongs to the next chunk.
      acceptedCount = requestedCount - 1;
      text.append(*chunk, 0, chunk->size() - astralByteCount);
    } else {
      text += *chunk;
    }
    const bool leavesOutHalfPair = acceptedCount == requestedCount - 1 && location + requestedCount < length &&
                                   isSurrogatePair(element, location + acceptedCount);
    if (acceptedCount != requestedCount && !leavesOutHalfPair) {
      addIncompleteTextIssue(nodeID, stringForRange, receivedCount, requestedCount);
      isComplete = false;
    }
    location += acceptedCount;
    if (leavesOutHalfPair && location + 1 == keptUnits) keptUnits = location;
  }
  if (length > keptUnits) addTextTruncation(cutReason, nodeID, length - keptUnits);
  if (!isComplete) return std::nullopt;
  return text;
}

AccessibilityResult<std::string> AccessibilityTextReader::string(AccessibilityElement element, std::int64_t location,
                                                                 std::int64_t length) {
  auto value = session_.parameterizedAttributeValue(element, stringForRange, ArtifactTextRange{location, length});
  if (!value) return std::unexpected(value.error());
  if (auto* text = std::get_if<std::string>(&*value)) return std::move(*text);
  return std::unexpected(AccessibilityErrorCode::noValue);
}

bool AccessibilityTextReader::isSurrogatePair(AccessibilityElement element, std::int64_t location) {
  const auto pair = string(element, location, 2);
  return pair && pair->size() == astralByteCount && utf16Length(*pair) == 2;
}

void AccessibilityTextReader::addTextTruncation(AccessibilityTruncationReason reason, std::int64_t nodeID,
                                                std::int64_t omittedCount) {
  state_.addTruncation({reason, nodeID, "AXFullText", omittedCount});
}

void AccessibilityTextReader::addIncompleteTextIssue(std::int64_t nodeID, std::string_view attribute,
                                                     std::int64_t receivedCount, std::int64_t requestedCount) {
  state_.addIssue({AccessibilityIssueSeverity::warning, std::string(incompleteTextReadCode),
                   fmt::format("The app returned {} of {} requested UTF-16 units; the partial text was discarded.",
                               receivedCount, requestedCount),
                   nodeID, std::string(attribute)});
}

void AccessibilityTextReader::addUnreadableTextIssue(AccessibilityErrorCode code, std::int64_t nodeID,
                                                     std::string_view attribute) {
  state_.addWarning(code, "Could not read complete text.", nodeID, attribute);
}

void AccessibilityTextReader::addUnboundedMarkerIssue(std::int64_t nodeID, bool wasExposed) {
  state_.addIssue({AccessibilityIssueSeverity::warning, "AXTextMarkerRangeCouldNotBeBounded",
                   fmt::format("Complete document text exceeded a capture limit, but the app did not {} a bounded "
                               "text-marker range.",
                               wasExposed ? "return" : "expose"),
                   nodeID, std::nullopt});
}

}  // namespace quillo
