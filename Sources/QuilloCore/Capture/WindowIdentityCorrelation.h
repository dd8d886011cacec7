#pragma once

#include <optional>
#include <string>

namespace quillo::WindowIdentityCorrelation {

/// Whether two titles name the same window: both are there, and, white space aside, they are equal or one is the other
/// with something before or behind it, a separator between ("Inbox" and "Inbox - Mail"). What they share must have
/// at least three characters.
bool titlesCorrelate(const std::optional<std::string>& a, const std::optional<std::string>& b);

}  // namespace quillo::WindowIdentityCorrelation
