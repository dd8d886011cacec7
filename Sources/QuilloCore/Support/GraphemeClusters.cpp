#include "QuilloCore/Support/GraphemeClusters.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <array>
#include <cstddef>
#include <cstdint>
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

struct Range {
  char32_t first;
  char32_t last;
};

/// Characters between which, standing side by side, there is always a boundary: letters, digits and signs of scripts
/// without conjuncts, whole Hangul syllables, and pictographs (which only a joiner joins). No mark, prefix or control.
constexpr auto simpleRanges = std::to_array<Range>({
    {0x0020, 0x007E},                                          // ASCII
    {0x00A0, 0x00A8},                                          // Latin-1, without the soft hyphen
    {0x00AA, 0x00AC},   {0x00AF, 0x02FF},   {0x0370, 0x0482},  // Greek, Cyrillic
    {0x048A, 0x058F},                                          // Cyrillic, Armenian
    {0x05D0, 0x05EF},                                          // Hebrew
    {0x0620, 0x064A},                                          // Arabic
    {0x1E00, 0x1FFF},                                          // Latin and Greek with accents
    {0x2010, 0x2027},                                          // dashes, quotation marks
    {0x3001, 0x3029},                                          // ideographic punctuation
    {0x3041, 0x3096},                                          // kana, Bopomofo
    {0x309B, 0x312F},   {0x3400, 0x9FFF},                      // ideographs
    {0xAC00, 0xD7A3},                                          // Hangul syllables
    {0xFF01, 0xFF9D},                                          // full-width forms
    {0x1F300, 0x1F3FA},                                        // pictographs, without the skin tones
    {0x1F400, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
});

constexpr std::size_t simpleLimit = 0x1FA00;

constexpr auto simpleBits = [] {
  std::array<std::uint64_t, simpleLimit / 64> bits{};
  for (const Range& range : simpleRanges) {
    for (char32_t c = range.first; c <= range.last; ++c) bits[c / 64] |= std::uint64_t{1} << (c % 64);
  }
  return bits;
}();

bool isSimple(char32_t c) {
  return c < simpleLimit && (simpleBits[c / 64] >> (c % 64) & 1U) != 0;
}

/// Nothing is joined to it, but LF to CR.
bool isAsciiControl(char32_t c) {
  return c < 0x20;
}

/// A mark that joins the character before it, and to which nothing but further marks is joined.
bool isPlainMark(char32_t c) {
  return c >= 0x300 && c <= 0x36F;
}

/// Steps over ASCII at the beginning, where only CR LF is a cluster of two; stops before a character that what follows
/// may join.
std::size_t stepThroughAscii(std::string_view text, std::int64_t maximumCount, std::int64_t& count) {
  std::string_view run = text;
  // No more than can be needed.
  if (maximumCount - count < static_cast<std::int64_t>(text.size() / 2)) {
    run = text.substr(0, 2 * static_cast<std::size_t>(maximumCount - count) + 1);
  }
  run = run.substr(0, asciiPrefixLength(run));
  if (run.empty()) return 0;
  const bool isJoinable = run.back() >= ' ' || run.back() == '\r';
  if (run.size() < text.size() && isJoinable) run.remove_suffix(1);
  std::int64_t pairs = 0;
  for (auto at = run.find("\r\n"); at != std::string_view::npos; at = run.find("\r\n", at + 2)) ++pairs;
  const std::int64_t clusters = static_cast<std::int64_t>(run.size()) - pairs;
  if (clusters <= maximumCount - count) {
    count += clusters;
    return run.size();
  }
  std::size_t position = 0;
  for (; count < maximumCount; ++count) position += run.substr(position).starts_with("\r\n") ? 2 : 1;
  return position;
}

/// The end of the stretch that begins at `position` and is ICU's: at the next place between two simple characters,
/// where there is a boundary whatever stands around.
std::size_t endOfSegment(std::string_view text, std::size_t position) {
  bool isPreviousSimple = false;
  while (position < text.size()) {
    std::size_t next = position;
    const bool isNextSimple = isSimple(nextCodePoint(text, next));
    if (isPreviousSimple && isNextSimple) break;
    isPreviousSimple = isNextSimple;
    position = next;
  }
  return position;
}

/// Steps over at most `maximumCount` clusters from the beginning; returns the bytes passed and sets `count`.
///
/// Most text is ASCII, or runs of simple characters that may carry plain marks: each is a cluster when another simple
/// one follows. Only the stretches around other characters are given to ICU.
std::size_t step(std::string_view text, std::int64_t maximumCount, std::int64_t& count) {
  std::size_t position = 0;
  count = 0;
  while (count < maximumCount && position < text.size()) {
    if (static_cast<unsigned char>(text[position]) < 0x80) {
      position += stepThroughAscii(text.substr(position), maximumCount, count);
      if (count == maximumCount || position == text.size()) break;
    }
    std::size_t end = position;
    const bool isFirstSimple = isSimple(nextCodePoint(text, end));
    std::size_t next = end;
    char32_t following = 0;
    while (end < text.size()) {
      following = nextCodePoint(text, next);
      if (!isPlainMark(following)) break;
      end = next;
    }
    if (isFirstSimple && (end == text.size() || isSimple(following) || isAsciiControl(following))) {
      ++count;
      position = end;
    } else {
      const std::string_view segment = text.substr(position, endOfSegment(text, position) - position);
      position += stepThroughSegment(segment, maximumCount, count);
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
