#include "QuilloCore/Clipboard/SystemPasteboardSession.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "Tests/Support/FakePasteboard.h"
#include "Tests/Support/PasteboardContract.h"

namespace quillo::test {
namespace {

using Answer = PasteboardReading::Answer;
using Kind = ClipboardConditionalWriteResult::Kind;
using Restored = PasteboardConditionalRestoreResult;

PasteboardReading::Type given(std::string type, std::string data, std::string packing = {}) {
  return {.content = {.type = std::move(type), .data = std::move(data), .packing = std::move(packing)}};
}

PasteboardReading::Type without(std::string type, Answer answer) {
  return {.content = {.type = std::move(type), .data = {}}, .answer = answer};
}

class SystemPasteboardSessionTest : public testing::Test {
 protected:
  PasteboardSnapshot captureSnapshot() {
    return runBlocking([&] { return session_.captureSnapshot(); });
  }
  ClipboardConditionalWriteResult write(std::uint64_t count) {
    const ClipboardPayload payload{.captureID = {}, .pngData = "no picture", .plainText = "text"};
    return runBlocking([&] { return session_.write(payload, ClipboardComposition::textOnly, count); });
  }
  Restored restore(const PasteboardSnapshot& snapshot, std::uint64_t count) {
    return runBlocking([&] { return session_.restore(snapshot, count); });
  }
  std::uint64_t changeCount() {
    return runBlocking([&] { return session_.changeCount(); });
  }

  const PasteboardReading others_{.topLevelTypes = {"text/plain", "image/png"},
                                  .items = {{given("text/plain", "the user's", "UTF8_STRING 8")},
                                            {given("image/png", std::string("\0png\xFF", 5)), given("empty", "")}}};
  FakePasteboard pasteboard_;
  ClipboardPayloadWriter writer_;
  SystemPasteboardSession session_{pasteboard_, writer_};
};

TEST_F(SystemPasteboardSessionTest, overTheFakeKeepsTheContract) {
  expectPasteboardContract({.pasteboard = pasteboard_, .copyElsewhere = [&](const std::string& text) {
                              pasteboard_.replaceFromOutside(
                                  {.topLevelTypes = {"UTF8_STRING"}, .items = {{given("UTF8_STRING", text)}}});
                            }});
}

TEST_F(SystemPasteboardSessionTest, whatCannotBeReadMakesTheSnapshotIncomplete) {
  struct Example {
    const char* label;
    PasteboardReading reading;
    std::vector<std::string> uncaptured;
    std::vector<std::string> unrepresented;
  };
  const std::vector<Example> examples = {
      {"a type that failed, twice advertised",
       {{"a", "b"}, {{given("a", "1"), without("b", Answer::failed), without("b", Answer::failed)}}},
       {"b"},
       {}},
      {"a type that the owner refuses is no content",
       {{"a", "b"}, {{without("b", Answer::refused), given("a", "1")}}},
       {},
       {}},
      {"nothing but refusals",
       {{"a", "b"}, {{without("a", Answer::refused), without("b", Answer::refused)}}},
       {},
       {"a", "b"}},
      {"types and no items", {{"a"}, {}}, {}, {"a"}},
  };
  for (const Example& example : examples) {
    pasteboard_.replaceFromOutside(example.reading);
    const PasteboardSnapshot snapshot = captureSnapshot();
    std::vector<std::string> uncaptured;
    for (const auto& item : snapshot.items) {
      for (const std::string& type : item.uncapturedTypes()) uncaptured.push_back(type);
    }
    EXPECT_EQ(uncaptured, example.uncaptured) << example.label;
    EXPECT_EQ(snapshot.unrepresentedTopLevelTypes, example.unrepresented) << example.label;
    const bool isComplete = example.uncaptured.empty() && example.unrepresented.empty();
    EXPECT_EQ(snapshot.isComplete(), isComplete) << example.label;

    const std::uint64_t count = changeCount();
    EXPECT_EQ(restore(snapshot, count), isComplete ? Restored::restored : Restored::failed) << example.label;
    if (!isComplete) {
      EXPECT_EQ(pasteboard_.contents, example.reading) << example.label;
      EXPECT_EQ(changeCount(), count) << example.label;
    }
  }
}

TEST_F(SystemPasteboardSessionTest, clipboardIsBorrowedAndGivenBackUnlessSomebodyWritesJustThen) {
  pasteboard_.replaceFromOutside(others_);
  const PasteboardSnapshot snapshot = captureSnapshot();
  const auto written = write(changeCount());
  EXPECT_EQ(pasteboard_.use, PasteboardUse::borrowed);
  EXPECT_EQ(restore(snapshot, *written.changeCount), Restored::restored);
  EXPECT_EQ(pasteboard_.contents.items, others_.items) << "with its packing";
  EXPECT_EQ(pasteboard_.use, PasteboardUse::restored);

  pasteboard_.beforeReplacing = [&] { pasteboard_.replaceFromOutside(others_); };
  EXPECT_EQ(write(changeCount()).kind, Kind::changed);
  EXPECT_EQ(restore({}, changeCount()), Restored::skippedBecauseClipboardChanged);
  EXPECT_EQ(pasteboard_.contents, others_);
}

TEST_F(SystemPasteboardSessionTest, refusalsOfTheClipboardAreResults) {
  pasteboard_.rejectsWrites = true;
  const auto rejected = write(changeCount());
  EXPECT_EQ(rejected, (ClipboardConditionalWriteResult{Kind::rejected, pasteboard_.count}));
  EXPECT_EQ(restore({}, pasteboard_.count), Restored::failed);

  pasteboard_.error = PasteboardError(PasteboardError::DisplayLost{});
  EXPECT_EQ(changeCount(), SystemPasteboardSession::unreachableChangeCount);
  EXPECT_FALSE(captureSnapshot().isComplete());
  EXPECT_EQ(write(1), (ClipboardConditionalWriteResult{Kind::rejected, std::nullopt}));
  EXPECT_EQ(restore({}, 1), Restored::failed);
}

}  // namespace
}  // namespace quillo::test
