#include "QuilloCore/Support/GraphemeClusters.h"

#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "QuilloCore/Support/Utf8.h"

namespace quillo::test {
namespace {

/// The boundaries that ICU alone sees, as byte offsets.
std::vector<std::size_t> boundariesByIcu(icu::BreakIterator& iterator, const std::string& text) {
  const icu::UnicodeString units = icu::UnicodeString::fromUTF8(text);
  iterator.setText(units);
  std::vector<std::size_t> boundaries;
  for (int32_t unit = iterator.first(); unit != icu::BreakIterator::DONE; unit = iterator.next()) {
    std::string before;
    units.tempSubStringBetween(0, unit).toUTF8String(before);
    boundaries.push_back(before.size());
  }
  return boundaries;
}

TEST(GraphemeClusters, theFastPathAgreesWithIcuOnGeneratedTexts) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  ASSERT_TRUE(U_SUCCESS(status));
  // What decides about boundaries, much denser than in any real text.
  const std::u32string special =
      U"\r\n\t\u00AD\u0300\u0301\u200D\u200C\uFE0F\u20E3\U0001F1E9\U0001F1EA\U0001F468\U0001F469\U0001F3FD\u2764\u00A9"
      U"\u1112\u1161\u11AB\uAC00\uAC01\u0600\u0915\u094D\u0937\u093F\u0E01\u0E33\u0E4D\u0F40\u0FB2\U000E0067\U000E007F"
      U"\u3099\u302A\u303D\u203C\u0483\u0591\u064B\u0670\uFF9E\uFF76\u2028a1 ";
  std::mt19937 random(11);  // NOLINT(bugprone-random-generator-seed): the same texts in every run
  for (int round = 0; round < 20'000; ++round) {
    std::string text;
    const std::size_t length = 1 + random() % 12;
    while (countCodePoints(text) < length) {
      // Specials, the scripts that the fast path knows, and any code point at all.
      const unsigned choice = random() % 10;
      char32_t c = choice < 5   ? special[random() % special.size()]
                   : choice < 8 ? random() % 0x3200
                                : random() % 0x20000;
      if (choice == 8) c = 0xAC00 + random() % (0x10000 - 0xAC00);
      if (c < 0xD800 || c > 0xDFFF) appendCodePoint(text, c);
    }
    const std::vector<std::size_t> expected = boundariesByIcu(*iterator, text);
    std::vector<std::size_t> actual;
    actual.reserve(expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
      actual.push_back(graphemeClusterPrefix(text, static_cast<std::int64_t>(i)).size());
    }
    ASSERT_EQ(expected, actual) << testing::PrintToString(text);
    ASSERT_EQ(static_cast<std::int64_t>(expected.size()) - 1, countGraphemeClusters(text));
    ASSERT_EQ(text, graphemeClusterPrefix(text, static_cast<std::int64_t>(expected.size())));
  }
}

TEST(GraphemeClusters, everySimpleCharacterStandsAloneBesideALetterAndTakesMarks) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> iterator(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  ASSERT_TRUE(U_SUCCESS(status));
  for (char32_t c = 0; c < 0x1FB00; ++c) {
    if (c == 0xD800) c = 0xE000;
    std::string text;
    for (const char32_t part : {c, U'a', c, c, U'\u0301', c, U'가'}) appendCodePoint(text, part);
    ASSERT_EQ(static_cast<std::int64_t>(boundariesByIcu(*iterator, text).size()) - 1, countGraphemeClusters(text))
        << std::hex << static_cast<std::uint32_t>(c);
  }
}

}  // namespace
}  // namespace quillo::test
