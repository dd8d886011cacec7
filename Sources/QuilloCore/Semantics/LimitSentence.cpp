#include "QuilloCore/Semantics/LimitSentence.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillo {
namespace {

std::string_view limitName(AccessibilityTruncationReason reason) {
  switch (reason) {
    case AccessibilityTruncationReason::nodeLimit: return "element";
    case AccessibilityTruncationReason::depthLimit: return "depth";
    case AccessibilityTruncationReason::characterLimit: return "capture-wide text";
    case AccessibilityTruncationReason::attributeValueLimit: return "per-value text";
  }
  return {};
}

std::string_view omittedUnit(AccessibilityTruncationReason reason, bool isOne) {
  const bool isText = reason == AccessibilityTruncationReason::characterLimit ||
                      reason == AccessibilityTruncationReason::attributeValueLimit;
  if (isText) return isOne ? "text unit" : "text units";
  return isOne ? "immediate frontier reference" : "immediate frontier references";
}

}  // namespace

std::string limitSentence(AccessibilityTruncationReason reason, std::span<const AccessibilityTruncation> truncations) {
  std::size_t recordCount = 0;
  bool areAllKnown = true;
  std::int64_t omitted = 0;
  for (const AccessibilityTruncation& truncation : truncations) {
    if (truncation.reason != reason) continue;
    ++recordCount;
    areAllKnown = areAllKnown && truncation.omittedCount.has_value();
    const std::int64_t count = std::max<std::int64_t>(truncation.omittedCount.value_or(0), 0);
    omitted += std::min(count, INT64_MAX - omitted);
  }
  if (recordCount == 0) return {};
  std::string sentence = fmt::format("The {} safety limit was reached at {} {}.", limitName(reason), recordCount,
                                     recordCount == 1 ? "interface point" : "interface points");
  const std::string omission =
      fmt::format("{} {} {} omitted", omitted, omittedUnit(reason, omitted == 1), omitted == 1 ? "was" : "were");
  if (areAllKnown) return sentence + " " + omission + ".";
  if (omitted >= 1) return sentence + " At least " + omission + "; some counts were unavailable.";
  return sentence + " The omitted count was unavailable.";
}

}  // namespace quillo
