#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/AggregateMatching.h"
#include "QuilloCore/Semantics/SemanticTokens.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"
#include "QuilloCore/Semantics/UncoveredSpans.h"

namespace quillo::test {
namespace {

using Words = std::vector<std::uint32_t>;

/// The rule as it is said: longer texts first, then the shorter ones between them; every place is tried.
class SlowMatching {
 public:
  explicit SlowMatching(Words aggregate) : aggregate_(std::move(aggregate)), isConsumed(aggregate_.size()) {}

  std::vector<bool> match(const std::vector<Words>& texts) {
    std::vector<bool> isFound(texts.size());
    std::vector<std::optional<std::size_t>> anchors(texts.size());
    std::size_t cursor = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (texts[i].size() < 3) continue;
      anchors[i] = place(texts[i], 0, cursor, aggregate_.size());
      isFound[i] = anchors[i].has_value();
    }
    std::size_t begin = 0;
    cursor = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (anchors[i]) begin = cursor = *anchors[i] + texts[i].size();
      if (texts[i].empty() || texts[i].size() >= 3) continue;
      std::size_t end = aggregate_.size();
      for (std::size_t j = texts.size(); j-- > i;) end = anchors[j].value_or(end);
      if (end < cursor) end = aggregate_.size();
      isFound[i] = place(texts[i], begin, cursor, end).has_value();
    }
    return isFound;
  }

 private:
  bool isFree(const Words& text, std::size_t begin) const {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (isConsumed[begin + i] || aggregate_[begin + i] != text[i]) return false;
    }
    return true;
  }

  std::optional<std::size_t> place(const Words& text, std::size_t begin, std::size_t& cursor, std::size_t end) {
    std::optional<std::size_t> found;
    for (std::size_t i = cursor; !found && i + text.size() <= end; ++i) {
      if (isFree(text, i)) found = i;
    }
    for (std::size_t i = begin; !found && i + text.size() <= cursor; ++i) {
      if (isFree(text, i)) found = i;
    }
    if (!found) return found;
    for (std::size_t i = 0; i < text.size(); ++i) isConsumed[*found + i] = true;
    cursor = *found + text.size();
    return found;
  }

  Words aggregate_;

 public:
  std::vector<bool> isConsumed;
};

TEST(RendererMatching, agreesWithTryingEveryPlace) {
  std::mt19937 random(4711);
  for (int round = 0; round < 20'000; ++round) {
    const std::uint32_t vocabulary = 2 + random() % 6;
    Words aggregate(random() % 24);
    for (auto& word : aggregate) word = random() % vocabulary;
    std::vector<Words> texts(random() % 8);
    for (Words& text : texts) {
      const std::size_t length = random() % 6;
      if (random() % 2 == 0 && length <= aggregate.size()) {
        const std::size_t begin = random() % (aggregate.size() - length + 1);
        text.assign(aggregate.begin() + static_cast<std::ptrdiff_t>(begin),
                    aggregate.begin() + static_cast<std::ptrdiff_t>(begin + length));
      } else {
        for (std::size_t i = 0; i < length; ++i) text.push_back(random() % (vocabulary + 1));
      }
    }
    TokenSequenceIndex index(aggregate);
    const std::vector<std::span<const std::uint32_t>> views(texts.begin(), texts.end());
    const std::vector<bool> found = matchInAggregate(index, views);
    SlowMatching slow(aggregate);
    ASSERT_EQ(found, slow.match(texts)) << "round " << round;
    std::size_t consumed = 0;
    for (std::size_t i = 0; i < aggregate.size(); ++i) {
      ASSERT_EQ(index.isConsumed(i), slow.isConsumed[i]) << "round " << round << " token " << i;
      consumed += static_cast<std::size_t>(slow.isConsumed[i]);
    }
    ASSERT_EQ(index.consumedCount(), consumed);
  }
}

std::string tokens(std::string_view text) {
  SemanticTokenizer tokenizer;
  std::string result;
  for (const SemanticToken& token : tokenizer.tokenize(text)) {
    if (!result.empty()) result += '|';
    result += text.substr(token.begin, token.end - token.begin);
  }
  return result;
}

TEST(RendererMatching, splitsTextsIntoWords) {
  EXPECT_EQ(tokens("Hello, world! 3.5%"), "Hello|world|3|5");
  EXPECT_EQ(tokens("fileName2Load HTTPServer ÉcoleÉté"), "file|Name2|Load|HTTPServer|ÉcoleÉté");
  EXPECT_EQ(tokens("naïve cafe\u0301s — …"), "naïve|cafe\u0301s");
  EXPECT_EQ(tokens("你好, API文档"), "你|好|API|文|档");
  EXPECT_EQ(tokens("สวัสดี"), "ส|วั|ส|ดี");
  SemanticTokenizer tokenizer;
  Words first;
  Words second;
  tokenizer.appendWords("ÉCOLE Straße", first);
  tokenizer.appendWords("école  STRAßE", second);
  EXPECT_EQ(first, second);
}

TEST(RendererMatching, saysWhereUncoveredSpansStand) {
  struct Case {
    std::string_view text;
    Words consumed;
    std::string_view expected;
  };
  const std::vector<Case> cases = {
      {"one two three", {0, 1, 2}, ""},
      {"one (two), three", {0, 2}, "uncovered source span (UTF-16 4 to 10 of 16): (two),"},
      {"𝄞 one two", {1}, "uncovered source span (UTF-16 3 to 6 of 10): one"},
      {"a-b c", {1, 2}, "uncovered source span (UTF-16 0 to 2 of 5): a-"},
      {"one\r\ntwo\nthree four", {3}, "uncovered source span (UTF-16 0 to 14 of 19): one\n  two\n  three"},
      {"one two three",
       {1},
       "uncovered source span (UTF-16 0 to 3 of 13): one\nuncovered source span (UTF-16 8 to 13 of 13): three"},
  };
  for (const Case& test : cases) {
    SemanticTokenizer tokenizer;
    const std::vector<SemanticToken> found = tokenizer.tokenize(test.text);
    Words words;
    for (const SemanticToken& token : found) words.push_back(token.word);
    TokenSequenceIndex index(words);
    for (const std::uint32_t token : test.consumed) index.consume(token, 1);
    EXPECT_EQ(uncoveredSpans(test.text, found, index), test.expected);
  }
}

/// Texts that match almost everywhere must not make the search quadratic; what is then not found is printed in full.
TEST(RendererMatching, givesUpRatherThanCompareWithoutEnd) {
  Words aggregate(200'000, 1);
  aggregate.back() = 2;
  TokenSequenceIndex index(aggregate);
  Words text(1'000, 1);
  text.push_back(3);
  aggregate[5] = 3;
  const std::vector<std::span<const std::uint32_t>> texts(2'000, text);
  const std::vector<bool> found = matchInAggregate(index, texts);
  EXPECT_EQ(std::ranges::count(found, true), 0);
  EXPECT_EQ(index.consumedCount(), 0U);
}

}  // namespace
}  // namespace quillo::test
