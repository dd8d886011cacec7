#include "QuilloCore/Support/GraphemeClusters.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <stdexcept>

#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

struct CloseIterator {
  void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};
struct CloseText {
  void operator()(UText* text) const { utext_close(text); }
};

/// ICU's iterators are costly to make and hold state, so every thread has one.
UBreakIterator* threadIterator() {
  thread_local const std::unique_ptr<UBreakIterator, CloseIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UBreakIterator, CloseIterator> made(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    return made;
  }();
  return iterator.get();
}

/// Steps over at most `maximumCount` clusters of a segment; adds them to `count` and returns the bytes passed.
std::size_t stepThroughSegment(std::string_view segment, std::int64_t maximumCount, std::int64_t& count) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UText, CloseText> text(
      utext_openUTF8(nullptr, segment.data(), static_cast<std::int64_t>(segment.size()), &status));
  UBreakIterator* const iterator = threadIterator();
  ubrk_setUText(iterator, text.get(), &status);
  if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
  std::size_t passed = 0;
  while (count < maximumCount) {
    const std::int32_t boundary = ubrk_next(iterator);
    if (boundary == UBRK_DONE) break;
    passed = static_cast<std::size_t>(boundary);
    ++count;
  }
  return passed;
}

/// Whether the code point is of those between which, standing side by side, there is always a boundary: letters,
/// digits and signs of scripts without conjuncts, and whole Hangul syllables. No control, mark, prefix or emoji.
bool isSimple(char32_t c) {
  if (c < 0x300) return (c >= 0x20 && c < 0x7F) || c == '\n' || (c >= 0xA0 && c != 0xA9 && c != 0xAD && c != 0xAE);
  return (c >= 0x370 && c < 0x483)        // Greek, Cyrillic
         || (c >= 0x48A && c < 0x590)     // Cyrillic, Armenian
         || (c >= 0x5D0 && c < 0x5F0)     // Hebrew letters
         || (c >= 0x620 && c < 0x64B)     // Arabic letters
         || (c >= 0x1E00 && c < 0x2000)   // Latin and Greek with marks
         || (c >= 0x2010 && c < 0x2028)   // dashes, quotation marks, bullets
         || (c >= 0x3001 && c < 0x302A)   // ideographic punctuation
         || (c >= 0x3041 && c < 0x3097)   // Hiragana
         || (c >= 0x309B && c < 0x3130)   // Katakana, Bopomofo
         || (c >= 0x3400 && c < 0xA000)   // ideographs
         || (c >= 0xAC00 && c < 0xD7A4)   // Hangul syllables
         || (c >= 0xFF01 && c < 0xFF9E);  // full-width forms
}

/// Steps over at most `maximumCount` clusters from the beginning; returns the bytes passed and sets `count`.
///
/// Most text is runs of simple characters, each a cluster of its own when another simple one follows it. Only the
/// stretches around other characters are given to ICU: from the simple character before them, which may take a mark,
/// to the next place between two simple ones, where there is a boundary whatever stands around.
std::size_t step(std::string_view text, std::int64_t maximumCount, std::int64_t& count) {
  std::size_t position = 0;
  count = 0;
  while (count < maximumCount && position < text.size()) {
    std::size_t next = position;
    bool isPreviousSimple = isSimple(nextCodePoint(text, next));
    std::size_t end = next;
    for (std::size_t ahead = next; ahead < text.size(); end = ahead) {
      const bool isNextSimple = isSimple(nextCodePoint(text, ahead));
      if (isPreviousSimple && isNextSimple) break;
      isPreviousSimple = isNextSimple;
    }
    if (end == next && isPreviousSimple) {
      ++count;
      position = next;
    } else {
      const std::size_t passed = stepThroughSegment(text.substr(position, end - position), maximumCount, count);
      position += passed;
    }
  }
  return position;
}

}  // namespace

std::int64_t countGraphemeClusters(std::string_view text) {
  std::int64_t count = 0;
  step(text, std::numeric_limits<std::int64_t>::max(), count);
  return count;
}

std::string_view graphemeClusterPrefix(std::string_view text, std::int64_t maximumCount) {
  // No cluster is shorter than a byte.
  if (maximumCount >= static_cast<std::int64_t>(text.size())) return text;
  std::int64_t count = 0;
  return text.substr(0, step(text, maximumCount, count));
}

}  // namespace quillo
