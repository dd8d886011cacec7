#pragma once

#include <string_view>

namespace quillo {

/// Whether `sought` stands in `text` as whole words: "15" does not stand in "1500". After a bounded number of places
/// that cut a word the answer is no.
bool holdsWords(std::string_view text, std::string_view sought);

}  // namespace quillo
