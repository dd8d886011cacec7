#include "QuilloCore/Capture/AccessibilityTextMarkerReader.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "QuilloCore/Support/Utf16.h"

namespace quillo {
namespace {

constexpr std::string_view stringForRange = "AXStringForTextMarkerRange";
constexpr std::string_view lengthForRange = "AXLengthForTextMarkerRange";
constexpr std::string_view indexForMarker = "AXIndexForTextMarker";
constexpr std::string_view markerForIndex = "AXTextMarkerForIndex";

}  // namespace

bool AccessibilityTextMarkerReader::isSupported(AccessibilityElement element,
                                                const AdvertisedAttributeNames& advertised, std::int64_t nodeID) {
  offered_.clear();
  if (!advertised.contains("AXStartTextMarker") || !advertised.contains("AXEndTextMarker")) return false;
  offered_ = textReader_.parameterizedNames(element, nodeID);
  return std::ranges::count(offered_, stringForRange) > 0 && std::ranges::count(offered_, lengthForRange) > 0;
}

std::optional<std::string> AccessibilityTextMarkerReader::copyText(AccessibilityElement element, std::int64_t nodeID) {
  AccessibilityResult<Markers> range = wholeRange(element);
  if (!range) {
    textReader_.addUnreadableTextIssue(range.error(), nodeID, stringForRange);
    return std::nullopt;
  }
  const auto length = parameterized<std::int64_t>(element, lengthForRange, *range);
  if (!length) {
    textReader_.addUnreadableTextIssue(length.error(), nodeID, lengthForRange);
    return std::nullopt;
  }
  const auto [units, cutReason] = textReader_.allowance(*length);
  std::int64_t requestedCount = *length;
  if (*length > units) {
    if (units < 1) {
      textReader_.addTextTruncation(cutReason, nodeID, *length);
      return std::nullopt;
    }
    // The whole text may be far larger than the limit: it is asked for only up to a marker within it.
    const bool isOffered =
        std::ranges::count(offered_, indexForMarker) > 0 && std::ranges::count(offered_, markerForIndex) > 0;
    const auto bounded = isOffered ? boundedRange(element, range->front(), units) : std::nullopt;
    const auto boundedLength = bounded ? parameterized<std::int64_t>(element, lengthForRange, *bounded)
                                       : std::unexpected(AccessibilityErrorCode::noValue);
    if (!boundedLength || *boundedLength < 1 || *boundedLength > units) {
      textReader_.addTextTruncation(cutReason, nodeID, *length);
      textReader_.addUnboundedMarkerIssue(nodeID, isOffered);
      return std::nullopt;
    }
    range = *bounded;
    requestedCount = *boundedLength;
    textReader_.addTextTruncation(cutReason, nodeID, *length - requestedCount);
  }
  if (requestedCount < 1) return std::nullopt;

  auto text = parameterized<std::string>(element, stringForRange, *range);
  if (!text) {
    textReader_.addUnreadableTextIssue(text.error(), nodeID, stringForRange);
    return std::nullopt;
  }
  if (const std::int64_t receivedCount = utf16Length(*text); receivedCount != requestedCount) {
    textReader_.addIncompleteTextIssue(nodeID, stringForRange, receivedCount, requestedCount);
    return std::nullopt;
  }
  return std::move(*text);
}

template <class T>
AccessibilityResult<T> AccessibilityTextMarkerReader::parameterized(AccessibilityElement element, std::string_view name,
                                                                    const AccessibilityValue& parameter) {
  auto value = session_.parameterizedAttributeValue(element, name, parameter);
  if (!value) return std::unexpected(value.error());
  if (auto* typed = std::get_if<T>(&*value)) return std::move(*typed);
  return std::unexpected(AccessibilityErrorCode::noValue);
}

AccessibilityResult<AccessibilityTextMarkerReader::Markers> AccessibilityTextMarkerReader::wholeRange(
    AccessibilityElement element) {
  Markers markers;
  for (const std::string_view name : {"AXStartTextMarker", "AXEndTextMarker"}) {
    const auto value = session_.attributeValue(element, name);
    if (!value) return std::unexpected(value.error());
    const auto* marker = std::get_if<AccessibilityElement>(&*value);
    if (marker == nullptr) return std::unexpected(AccessibilityErrorCode::noValue);
    markers.push_back(*marker);
  }
  return markers;
}

std::optional<AccessibilityTextMarkerReader::Markers> AccessibilityTextMarkerReader::boundedRange(
    AccessibilityElement element, AccessibilityElement start, std::int64_t units) {
  const auto startIndex = parameterized<std::int64_t>(element, indexForMarker, start);
  if (!startIndex || *startIndex < 0 || *startIndex > std::numeric_limits<std::int64_t>::max() - units) {
    return std::nullopt;
  }
  const auto end = parameterized<AccessibilityElement>(element, markerForIndex, *startIndex + units);
  if (!end) return std::nullopt;
  return Markers{start, *end};
}

}  // namespace quillo
