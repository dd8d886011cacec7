#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;

TEST(Utf8, malformedSequencesAreFoundAndReplaced) {
  struct Case {
    const char* label;
    std::string text;
    std::optional<std::size_t> offset;
    std::string repaired;
  };
  const std::vector<Case> cases = {
      {"empty", "", {}, ""},
      {"every length", "aé€😀", {}, "aé€😀"},
      {"bounds of the planes", "\U0000D7FF\U0000E000\U0010FFFF", {}, "\U0000D7FF\U0000E000\U0010FFFF"},
      {"lone continuation", "ab\x80z", 2, "ab�z"},
      {"overlong slash", "\xC0\xAF", 0, "��"},
      {"overlong of three", "\xE0\x9F\xBF", 0, "���"},
      {"surrogate", "x\xED\xA0\x80y", 1, "x���y"},
      {"beyond the last plane", "\xF4\x90\x80\x80", 0, "����"},
      {"a cut sequence is one error", "€\xF0\x9F\x98", 3, "€�"},
      {"a cut sequence before text", "\xE2\x82z", 0, "�z"},
      {"far behind ASCII", std::string(100, 'a') + "\xFF" + std::string(100, 'b'), 100,
       std::string(100, 'a') + "�" + std::string(100, 'b')},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.offset, findInvalidUtf8(c.text)) << c.label;
    EXPECT_EQ(c.repaired, replacingInvalidUtf8(c.text)) << c.label;
  }
}

TEST(Utf8, codePointsAreReadBackAsWritten) {
  std::string text;
  const std::vector<char32_t> codePoints = {0, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
  for (const char32_t c : codePoints) appendCodePoint(text, c);
  EXPECT_EQ(std::nullopt, findInvalidUtf8(text));
  EXPECT_EQ(codePoints.size(), countCodePoints(text));
  std::vector<char32_t> read;
  for (std::size_t position = 0; position < text.size();) read.push_back(nextCodePoint(text, position));
  EXPECT_EQ(codePoints, read);
}

TEST(Utf16, offsetsAreTranslatedLikeACountFromTheBeginning) {
  // Long enough for several checkpoints, with surrogate pairs on both sides of them.
  std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same texts in every run
  for (const std::vector<std::string>& letters :
       {std::vector<std::string>{"a"}, {"😀"}, {"a", "é", "€", "😀"}, {"a", "a", "a", "a", "a", "a", "😀"}}) {
    std::string text;
    std::vector<std::size_t> byteOffsets;  // of the code point that holds each unit
    while (byteOffsets.size() < 1500) {
      const std::string& letter = letters[random() % letters.size()];
      byteOffsets.push_back(text.size());
      if (letter.size() == 4) byteOffsets.push_back(text.size());
      text += letter;
    }
    byteOffsets.push_back(text.size());
    const Utf16Index index(text);
    const auto length = static_cast<std::int64_t>(byteOffsets.size()) - 1;
    ASSERT_EQ(length, index.length());
    ASSERT_EQ(length, utf16Length(text));
    for (std::int64_t unit = 0; unit <= length; ++unit) {
      const std::size_t offset = byteOffsets[static_cast<std::size_t>(unit)];
      ASSERT_EQ(offset, index.byteOffset(unit)) << unit;
      const bool isInsidePair = unit > 0 && byteOffsets[static_cast<std::size_t>(unit) - 1] == offset;
      ASSERT_EQ(unit - (isInsidePair ? 1 : 0), index.utf16Offset(offset)) << unit;
      ASSERT_EQ(text.substr(0, offset), utf16Prefix(text, unit)) << unit;
    }
    EXPECT_EQ(0U, index.byteOffset(-5));
    EXPECT_EQ(text.size(), index.byteOffset(length + 5));
    EXPECT_EQ(text, index.substring(-1, length + 1));
    EXPECT_EQ("", index.substring(7, 3));
  }
}

TEST(WhiteSpace, textIsTrimmedCollapsedAndSplitAtEveryUnicodeBlank) {
  const std::string text = "\u3000\t a\u00A0\u2003b\r\nc \u2028";
  EXPECT_EQ("a\u00A0\u2003b\r\nc", trimmingWhiteSpace(text));
  EXPECT_EQ("a b c", collapsingWhiteSpace(text));
  EXPECT_THAT(splittingAtWhiteSpace(text), ElementsAre("a", "b", "c"));
  for (const char* blank : {"", " ", "\n\n", "\u2029\u0085"}) {
    EXPECT_EQ("", trimmingWhiteSpace(blank));
    EXPECT_EQ("", collapsingWhiteSpace(blank));
    EXPECT_THAT(splittingAtWhiteSpace(blank), ElementsAre());
  }
  EXPECT_FALSE(isWhiteSpace(U'\u200B')) << "a zero-width space is none";
  EXPECT_EQ("é", trimmingWhiteSpace(" é "));
}

TEST(WhiteSpace, lineBreaksAreUnifiedOrRemoved) {
  EXPECT_EQ("a\nb\n\nc\n\nd\n", normalizingLineBreaks("a\r\nb\r\rc\n\r\nd\r"));
  EXPECT_EQ("Save  now \u2192  later", bringingToOneLine("\nSave  now\r\n\t\u2028\u0085\u2192\v\f\x7F later\x1B"));
}

TEST(LetterCase, lettersAreLoweredAndClassifiedByUnicode) {
  EXPECT_EQ("hello, world 1", lowercased("Hello, WORLD 1"));
  EXPECT_EQ("straße ὀδυσσεύς i\u0307", lowercased("STRAßE ὈΔΥΣΣΕΎΣ \u0130"));
  EXPECT_EQ(std::string(60, 'x') + "\u2C65\u2C65", lowercased(std::string(60, 'X') + "\u023A\u023A")) << "it grows";
  EXPECT_EQ("éCOLE", lowercasingFirstLetter("ÉCOLE"));
  EXPECT_EQ("", lowercasingFirstLetter(""));
  EXPECT_TRUE(isUppercaseLetter(U'Ж') && isUppercaseLetter(U'\u01C5') && !isUppercaseLetter(U'ж'));
  EXPECT_TRUE(isLowercaseLetter(U'ß') && !isLowercaseLetter(U'中'));
  for (const char32_t c : {U'7', U'中', U'\u0301', U'\u0663', U'a'}) EXPECT_TRUE(isLetterDigitOrMark(c));
  for (const char32_t c : {U'-', U'_', U' ', U'€', U'\u00BD'}) EXPECT_FALSE(isLetterDigitOrMark(c));
}

}  // namespace
}  // namespace quillo::test
