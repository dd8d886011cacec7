#pragma once

#include <cstdint>
#include <string_view>

namespace quillo {

/// Number of user-perceived characters (extended grapheme clusters) of a well-formed UTF-8 text.
std::int64_t countGraphemeClusters(std::string_view text);

/// The longest prefix with at most `maximumCount` user-perceived characters.
std::string_view graphemeClusterPrefix(std::string_view text, std::int64_t maximumCount);

}  // namespace quillo
