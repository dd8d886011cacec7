#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AuthoritativeTextMarking.h"
#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo::test {
namespace {

using Range = std::optional<ArtifactTextRange>;

std::string marked(std::string_view text, const Range& selected, const Range& visible) {
  std::string result;
  for (const MarkedTextPiece& piece : markAuthoritativeText(text, selected, visible)) result += piece.text;
  return result;
}

bool isValid(const ArtifactTextRange& range, std::int64_t length) {
  return range.location >= 0 && range.length >= 0 && range.location <= length &&
         range.length <= length - range.location;
}

/// Asks at every UTF-16 unit what begins and ends there. An offset inside a surrogate pair counts as the pair's start.
std::string markedUnitByUnit(std::string_view text, Range selected, Range visible) {
  const std::int64_t length = utf16Length(text);
  if (selected && !isValid(*selected, length)) selected.reset();
  if (visible && (!isValid(*visible, length) || visible->length == 0 || visible->length == length)) visible.reset();
  const auto begins = [&](const Range& range, std::int64_t unit) {
    return range && range->length > 0 && range->location == unit;
  };
  const auto ends = [&](const Range& range, std::int64_t unit) {
    return range && range->length > 0 && range->location + range->length == unit;
  };
  const auto isOpen = [&](const Range& range, std::int64_t unit) {
    return range && range->location < unit && unit < range->location + range->length;
  };
  std::string result;
  std::size_t position = 0;
  std::int64_t unit = 0;
  for (;;) {
    const std::size_t begin = position;
    if (position < text.size()) nextCodePoint(text, position);
    const std::int64_t units = utf16Length(text.substr(begin, position - begin));
    for (std::int64_t here = unit; here < unit + std::max<std::int64_t>(units, 1); ++here) {
      // A visible range that begins or ends inside the selection closes and reopens it.
      const bool isReopened = ends(visible, here) && isOpen(selected, here);
      const bool isInterrupted = begins(visible, here) && isOpen(selected, here);
      if (ends(selected, here) || isReopened || isInterrupted) result += "⟦/selected⟧";
      if (ends(visible, here)) result += "⟦/visible⟧";
      if (begins(visible, here)) result += "⟦visible⟧";
      if (begins(selected, here) || isReopened || isInterrupted) result += "⟦selected⟧";
      if (selected && selected->length == 0 && selected->location == here) result += "⟦caret⟧";
    }
    if (begin == text.size()) return result;
    result += text.substr(begin, position - begin);
    unit += units;
  }
}

TEST(RendererMarking, agreesWithTheUnitByUnitVersion) {
  std::mt19937 random(20261114);
  const std::vector<std::string> characters = {"a", "é", "語", "𝄞", "\n", "👩"};
  const auto upTo = [&](std::int64_t limit) {
    return static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(limit + 1));
  };
  for (int round = 0; round < 20'000; ++round) {
    std::string text;
    for (std::int64_t i = upTo(7); i > 0; --i) text += characters[static_cast<std::size_t>(upTo(5))];
    const std::int64_t length = utf16Length(text);
    const auto anyRange = [&]() -> Range {
      if (upTo(4) == 0) return std::nullopt;
      return ArtifactTextRange{.location = upTo(length + 3) - 1, .length = upTo(length + 2) - 1};
    };
    const Range selected = anyRange();
    const Range visible = anyRange();
    ASSERT_EQ(marked(text, selected, visible), markedUnitByUnit(text, selected, visible))
        << text
        << (selected ? " selected " + std::to_string(selected->location) + "+" + std::to_string(selected->length) : "")
        << (visible ? " visible " + std::to_string(visible->location) + "+" + std::to_string(visible->length) : "");
  }
}

TEST(RendererMarking, ordersTheTokensOfOneOffset) {
  struct Case {
    Range selected;
    Range visible;
    std::string_view expected;
  };
  const std::vector<Case> cases = {
      {ArtifactTextRange{2, 3}, ArtifactTextRange{0, 8}, "⟦visible⟧01⟦selected⟧234⟦/selected⟧567⟦/visible⟧89"},
      {ArtifactTextRange{0, 3}, ArtifactTextRange{0, 8}, "⟦visible⟧⟦selected⟧012⟦/selected⟧34567⟦/visible⟧89"},
      {ArtifactTextRange{6, 4}, ArtifactTextRange{0, 8},
       "⟦visible⟧012345⟦selected⟧67⟦/selected⟧⟦/visible⟧⟦selected⟧89⟦/selected⟧"},
      {ArtifactTextRange{8, 0}, ArtifactTextRange{0, 8}, "⟦visible⟧01234567⟦/visible⟧⟦caret⟧89"},
      {ArtifactTextRange{10, 0}, std::nullopt, "0123456789⟦caret⟧"},
      {std::nullopt, ArtifactTextRange{0, 10}, "0123456789"},
      {ArtifactTextRange{5, INT64_MAX}, ArtifactTextRange{INT64_MAX, 1}, "0123456789"},
  };
  for (const Case& test : cases) EXPECT_EQ(marked("0123456789", test.selected, test.visible), test.expected);
}

}  // namespace
}  // namespace quillo::test
