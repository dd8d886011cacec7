#include "QuilloCore/Capture/WindowIdentityCorrelation.h"

#include <algorithm>
#include <string_view>

#include "QuilloCore/Capture/WindowTitle.h"
#include "QuilloCore/Support/GraphemeClusters.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::WindowIdentityCorrelation {
namespace {

constexpr std::int64_t shortestSharedPart = 3;

bool isPartOf(std::string_view part, std::string_view whole) {
  return countGraphemeClusters(part) >= shortestSharedPart &&
         std::ranges::any_of(WindowTitle::separators, [&](std::string_view separator) {
           return (whole.starts_with(part) && whole.substr(part.size()).starts_with(separator)) ||
                  (whole.ends_with(part) && whole.substr(0, whole.size() - part.size()).ends_with(separator));
         });
}

}  // namespace

bool titlesCorrelate(const std::optional<std::string>& a, const std::optional<std::string>& b) {
  if (!a || !b) return false;
  const std::string_view first = trimmingWhiteSpace(*a);
  const std::string_view second = trimmingWhiteSpace(*b);
  if (first.empty() || second.empty()) return false;
  return first == second || isPartOf(first, second) || isPartOf(second, first);
}

}  // namespace quillo::WindowIdentityCorrelation
