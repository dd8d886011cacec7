#include "QuilloCore/Semantics/WholeWords.h"

#include <cstddef>

#include "QuilloCore/Semantics/SubstringIndex.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

bool isWordPart(std::string_view text, std::size_t position) {
  return isLetterDigitOrMark(nextCodePoint(text, position));
}

std::size_t startOfCodePointBefore(std::string_view text, std::size_t position) {
  do {
    --position;
  } while (position > 0 && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U);
  return position;
}

}  // namespace

bool holdsWords(std::string_view text, std::string_view sought) {
  if (sought.empty()) return true;
  constexpr int maximumAttempts = 16;
  std::size_t begin = 0;
  for (int attempt = 0; attempt < maximumAttempts; ++attempt, ++begin) {
    begin = findSubstring(text, sought, begin);
    if (begin == std::string_view::npos) return false;
    const std::size_t end = begin + sought.size();
    const bool cutsFirst = begin > 0 && isWordPart(sought, 0) && isWordPart(text, startOfCodePointBefore(text, begin));
    const bool cutsLast =
        end < text.size() && isWordPart(text, end) && isWordPart(sought, startOfCodePointBefore(sought, sought.size()));
    if (!cutsFirst && !cutsLast) return true;
  }
  return false;
}

}  // namespace quillo
