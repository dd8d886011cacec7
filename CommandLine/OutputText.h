#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// Every tab, line break and other control character shown as a blank, so that it ends no field and no line.
std::string showingBreaksAsBlanks(std::string_view text);

/// The lines joined with line feeds; nothing when there are none.
std::optional<std::string> joiningLines(const std::vector<std::string>& lines);

}  // namespace quillo
