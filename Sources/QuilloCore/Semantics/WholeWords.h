#pragma once

#include <string_view>

namespace quillo {

/// Whether the words of `sought` stand in `text` one after the other, as whole words: "15" does not stand in "1500",
/// and "1 2" stands in "• 1 • 2". A word is a run of letters, digits and marks. A text without words must stand there
/// as it is. Linear.
bool holdsWords(std::string_view text, std::string_view sought);

}  // namespace quillo
