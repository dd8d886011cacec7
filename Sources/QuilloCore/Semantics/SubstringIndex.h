#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The first place of `sought` in `text` at or behind `from`, or npos. Linear also for repetitive texts, where
/// std::string_view::find is quadratic.
std::size_t findSubstring(std::string_view text, std::string_view sought, std::size_t from = 0);

/// Answers whether many texts stand in one, exactly. The questions together take time about linear in all the texts:
/// what follows the place of the last hit is tried first, because questions mostly come in the order of the text; the
/// whole text is searched a bounded number of times; then its suffixes are sorted once, and each further question is a
/// binary search.
class SubstringIndex {
 public:
  explicit SubstringIndex(std::string text) : text_(std::move(text)) {}

  bool contains(std::string_view sought);

 private:
  bool containsSuffixBeginning(std::string_view sought) const;

  std::string text_;
  std::size_t cursor_ = 0;
  int fullSearches_ = 0;
  std::vector<std::int32_t> suffixes_;  // where the suffixes begin, in ascending order; empty until needed
};

/// Where the suffixes of the text begin, in ascending order of the suffixes (by unsigned bytes). Linear; the text must
/// be shorter than 2³¹ bytes.
std::vector<std::int32_t> sortSuffixes(std::string_view text);

}  // namespace quillo
