#pragma once

#include <string>

namespace quillo {

/// Seconds as messages print them: "15" for a whole value, else one decimal ("7.5").
std::string formatSeconds(double seconds);

/// Numbers as the rendered text prints them: "null" when not finite, no decimals for a whole value, else at most four
/// decimals without trailing zeros.
std::string formatNumber(double value);

}  // namespace quillo
