#include "QuilloApp/Model/CaptureSummary.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo {
namespace {

constexpr std::array<std::pair<AccessibilityTruncationReason, std::string_view>, 4> limitTexts = {{
    {AccessibilityTruncationReason::nodeLimit, "element limit reached"},
    {AccessibilityTruncationReason::depthLimit, "depth limit reached"},
    {AccessibilityTruncationReason::characterLimit, "text limit reached"},
    {AccessibilityTruncationReason::attributeValueLimit, "long texts shortened"},
}};

std::vector<std::string> whatIsMissing(const AccessibilitySnapshot& snapshot) {
  std::vector<std::string> missing;
  for (const auto& [reason, text] : limitTexts) {
    const auto isOfReason = [reason](const AccessibilityTruncation& truncation) { return truncation.reason == reason; };
    if (std::ranges::any_of(snapshot.truncations, isOfReason)) missing.emplace_back(text);
  }
  const auto problems =
      std::ranges::count(snapshot.issues, AccessibilityIssueSeverity::warning, &AccessibilityCaptureIssue::severity);
  if (problems > 0) missing.push_back(fmt::format("{} reading {}", problems, problems == 1 ? "problem" : "problems"));
  if (missing.empty() && snapshot.wasTruncated) missing.emplace_back("cut short");
  return missing;
}

}  // namespace

std::string captureSummary(const AccessibilitySnapshot& snapshot) {
  const std::string count = fmt::format("{} {}", snapshot.nodeCount, snapshot.nodeCount == 1 ? "element" : "elements");
  const std::vector<std::string> missing = whatIsMissing(snapshot);
  if (missing.empty()) return count + ", complete";
  return fmt::format("{}, partial: {}", count, fmt::join(missing, ", "));
}

}  // namespace quillo
