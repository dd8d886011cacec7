#include "QuilloCore/Semantics/WholeWords.h"

#include <cstddef>
#include <string>

#include "QuilloCore/Semantics/SubstringIndex.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// The words, each with a blank on both sides.
std::string wordsOf(std::string_view text) {
  std::string words = " ";
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    const bool isWordPart = isLetterDigitOrMark(nextCodePoint(text, position));
    if (isWordPart) {
      words += text.substr(begin, position - begin);
    } else if (words.back() != ' ') {
      words += ' ';
    }
  }
  if (words.back() != ' ') words += ' ';
  return words;
}

}  // namespace

bool holdsWords(std::string_view text, std::string_view sought) {
  const std::string words = wordsOf(sought);
  if (words.size() == 1) return findSubstring(text, sought) != std::string_view::npos;
  return findSubstring(wordsOf(text), words) != std::string_view::npos;
}

}  // namespace quillo
