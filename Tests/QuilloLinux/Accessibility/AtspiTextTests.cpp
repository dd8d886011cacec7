// What is made of an application's texts: units of length, concealed entries, words between children.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuilloLinux/Accessibility/AtspiConcealedText.h"
#include "QuilloLinux/Accessibility/AtspiMixedText.h"
#include "QuilloLinux/Accessibility/AtspiTextUnits.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(AtspiTextUnits, applicationsCountInDifferentUnits) {
  struct Case {
    const char* label;
    std::string raw;
    std::int64_t count;
    AtspiText expected;
    ArtifactTextRange lastCharacter;  ///< of [count - 1, count)
  };
  const std::string smile = "\U0001F600";
  const std::vector<Case> cases = {
      {"plain", "abc", 3, {"abc", AtspiTextUnit::codePoint, 3}, {.location = 2, .length = 1}},
      {"code points", smile + "b", 2, {smile + "b", AtspiTextUnit::codePoint, 3}, {.location = 2, .length = 1}},
      {"UTF-16", smile + "b", 3, {smile + "b", AtspiTextUnit::utf16, 3}, {.location = 2, .length = 1}},
      {"fillers", smile + "\uFEFFb", 3, {smile + "b", AtspiTextUnit::utf16, 3}, {.location = 2, .length = 1}},
      {"a filler of the text's own",
       "a\uFEFF" + smile,
       3,
       {"a\uFEFF" + smile, AtspiTextUnit::codePoint, 4},
       {.location = 2, .length = 2}},
      {"a lie", "abc", 1000, {"abc", AtspiTextUnit::codePoint, 3}, {.location = 3, .length = 0}},
  };
  for (const Case& each : cases) {
    const AtspiText text = interpretText(each.raw, each.count);
    EXPECT_EQ(text, each.expected) << each.label;
    EXPECT_EQ(utf16Range(text, each.count - 1, each.count), each.lastCharacter) << each.label;
  }
  EXPECT_EQ(utf16Range(interpretText("abc", 3), -7, 2), (ArtifactTextRange{.location = 0, .length = 2}));
  EXPECT_EQ(utf16Range(interpretText("abc", 3), 2, 1), (ArtifactTextRange{.location = 2, .length = 0}));
}

TEST(AtspiConcealedText, marksAndDifferencesConceal) {
  EXPECT_TRUE(isConcealingMark("\u25CF"));
  EXPECT_TRUE(isConcealingMark("*"));
  EXPECT_FALSE(isConcealingMark("s"));
  EXPECT_FALSE(isConcealingMark(""));
  EXPECT_TRUE(isConcealed("x", "secret"));
  EXPECT_TRUE(isConcealed("", "secret")) << "nothing is shown at all";
  EXPECT_FALSE(isConcealed("s", "secret"));
  EXPECT_FALSE(isConcealed("", ""));
}

AtspiNodeRecord makeRecord(const std::string& text, std::size_t childCount, AtspiRole role = AtspiRole::paragraph) {
  AtspiNodeRecord record;
  record.role = role;
  record.text.emplace();
  record.text->text = interpretText(text, 0);
  record.text->characterCount = record.text->text.utf16Length;
  record.children.resize(childCount);
  return record;
}

TEST(AtspiMixedText, wordsStandBetweenTheChildren) {
  const auto words = [](const AtspiNodeRecord& record, AtspiToolkit toolkit = AtspiToolkit::gecko) {
    return wordsBetweenChildren(record, toolkit);
  };
  EXPECT_THAT(words(makeRecord("See \uFFFC, or\n\uFFFC", 2)), ElementsAre("See", ", or", ""));
  EXPECT_THAT(words(makeRecord("Loose words", 0, AtspiRole::article)), ElementsAre("Loose words"));

  EXPECT_THAT(words(makeRecord("See \uFFFC", 1), AtspiToolkit::chromium), IsEmpty()) << "has objects for words";
  EXPECT_THAT(words(makeRecord(" \uFFFC \uFFFC ", 2)), IsEmpty()) << "no words";
  EXPECT_THAT(words(makeRecord("See \uFFFC", 2)), IsEmpty()) << "a child without a place";
  EXPECT_THAT(words(makeRecord("A paragraph", 0)), IsEmpty()) << "the element itself is the text";
  EXPECT_THAT(words(makeRecord("Press \uFFFC", 1, AtspiRole::pushButton)), IsEmpty()) << "its name has them";

  AtspiNodeRecord item = makeRecord("First \uFFFC point", 1, AtspiRole::listItem);
  item.name = "First good point";
  EXPECT_THAT(words(item), IsEmpty()) << "the name has them";
  AtspiNodeRecord cut = makeRecord("See \uFFFC", 1);
  cut.text->characterCount = 1000;
  EXPECT_THAT(words(cut), IsEmpty()) << "a text that was read in part";
}

}  // namespace
}  // namespace quillo::test
