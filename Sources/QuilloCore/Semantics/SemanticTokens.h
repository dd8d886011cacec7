#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillo {

/// A word of a text as comparisons see it: letter case, punctuation and white space do not count.
struct SemanticToken {
  std::uint32_t word = 0;   ///< equal for equal words of one `SemanticTokenizer`
  std::uint32_t begin = 0;  ///< byte offsets in the text
  std::uint32_t end = 0;
};

/// Splits texts into tokens: maximal runs of letters, digits and marks of every script, lower-cased; an ASCII capital
/// behind an ASCII lower-case letter or digit begins a new one ("fileName" is two). In scripts that are written without
/// blanks between words every letter is a token of its own, so that a part of a sentence is found in the whole.
class SemanticTokenizer {
 public:
  std::vector<SemanticToken> tokenize(std::string_view text);

  /// Appends only the words.
  void appendWords(std::string_view text, std::vector<std::uint32_t>& words);

 private:
  std::uint32_t wordNumber(std::string_view token);

  std::unordered_map<std::string_view, std::uint32_t> numbers_;
  std::deque<std::string> words_;  // what the keys refer to
  std::string scratch_;
};

}  // namespace quillo
