#include "QuilloCore/Semantics/SubstringIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::test {
namespace {

std::vector<std::int32_t> sortedObviously(std::string_view text) {
  std::vector<std::int32_t> order(text.size());
  std::iota(order.begin(), order.end(), 0);
  std::ranges::sort(order, {}, [&](std::int32_t begin) { return text.substr(static_cast<std::size_t>(begin)); });
  return order;
}

TEST(SubstringIndex, suffixesOfEverySmallTextAreSorted) {
  std::string text;
  for (std::size_t length = 0; length <= 8; ++length) {
    std::size_t texts = 1;
    for (std::size_t i = 0; i < length; ++i) texts *= 3;
    for (std::size_t code = 0; code < texts; ++code) {
      text.clear();
      for (std::size_t rest = code; text.size() < length; rest /= 3) text += "a\xC3z"[rest % 3];
      ASSERT_EQ(sortSuffixes(text), sortedObviously(text)) << text;
    }
  }
}

TEST(SubstringIndex, suffixesOfRepetitiveTextsAreSorted) {
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    std::string text;
    while (text.size() < 300) {
      const std::size_t length = random() % 5 + 1;
      const std::size_t begin = text.empty() ? 0 : random() % text.size();
      text +=
          random() % 3 == 0 ? std::string(1, static_cast<char>('a' + random() % 2)) : text.substr(begin, length * 9);
    }
    ASSERT_EQ(sortSuffixes(text), sortedObviously(text)) << text;
  }
}

TEST(SubstringIndex, answersAreThoseOfASearchHoweverManyAreAsked) {
  std::mt19937 random(11);
  std::string text;
  for (int i = 0; i < 4000; ++i) text += static_cast<char>("ab c"[random() % 4]);
  SubstringIndex index(text);
  for (int question = 0; question < 2000; ++question) {
    std::string sought = text.substr(random() % text.size(), random() % 12);
    if (question % 2 == 0 && !sought.empty())
      sought[random() % sought.size()] = static_cast<char>("abc "[random() % 4]);
    ASSERT_EQ(index.contains(sought), text.find(sought) != std::string::npos) << question << ": " << sought;
  }
  EXPECT_TRUE(index.contains(text));
  EXPECT_FALSE(index.contains(text + "a"));
  EXPECT_TRUE(SubstringIndex("").contains(""));
}

}  // namespace
}  // namespace quillo::test
