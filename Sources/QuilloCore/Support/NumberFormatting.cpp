#include "QuilloCore/Support/NumberFormatting.h"

#include <fmt/format.h>

#include <cmath>

namespace quillo {

std::string formatSeconds(double seconds) {
  return std::trunc(seconds) == seconds ? fmt::format("{:.0f}", seconds) : fmt::format("{:.1f}", seconds);
}

std::string formatNumber(double value) {
  if (!std::isfinite(value)) return "null";
  if (std::nearbyint(value) == value) return fmt::format("{:.0f}", value);
  std::string text = fmt::format("{:.4f}", value);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace quillo
