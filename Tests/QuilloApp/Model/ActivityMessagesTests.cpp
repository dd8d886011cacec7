#include "QuilloApp/Model/ActivityMessages.h"

#include <gtest/gtest.h>

#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

class ActivityMessagesTest : public testing::Test {
 public:
  ~ActivityMessagesTest() override {
    tasks.cancelAll();
    loop.runReady();
  }

 protected:
  void advance(double seconds) {
    loop.runReady();
    clock.advance(seconds);
    loop.runReady();
  }

  const Activity& shown() { return state->activity; }

  ManualLoop loop;
  VirtualMonotonicClock clock;
  PublishedModelState state{loop.executor()};
  TaskGroup tasks{loop.executor()};
  ActivityMessages messages{state, clock, tasks};
};

TEST_F(ActivityMessagesTest, onlyTheNewestMessagesTimeCounts) {
  messages.showSuccess("done");
  advance(1);
  messages.showFailure("broken");
  advance(4.99);
  EXPECT_EQ(shown(), Activity::failure("broken"));
  loop.runReady();
  clock.advance(0.01);  // its task is on its way back when the next comes
  messages.showSuccess("done again");
  advance(2.19);
  EXPECT_EQ(shown(), Activity::success("done again"));
  advance(0.01);
  EXPECT_EQ(shown(), Activity());
}

TEST_F(ActivityMessagesTest, workIsShownUntilItIsDoneAndYieldsToWhatIsSaid) {
  messages.begin(Activity::Kind::capturing);
  advance(60);
  messages.beginQuietly(Activity::Kind::loading);
  messages.end(Activity::Kind::loading);
  EXPECT_EQ(shown().kind, Activity::Kind::capturing);
  messages.end(Activity::Kind::capturing);
  EXPECT_EQ(shown(), Activity());
  messages.beginQuietly(Activity::Kind::loading);
  EXPECT_EQ(shown().kind, Activity::Kind::loading);
}

TEST_F(ActivityMessagesTest, whoeverWantsToKnowIsToldOnceThatAMessageHasGone) {
  int goneCount = 0;
  const auto count = [&] { ++goneCount; };
  messages.show(Activity::success("dismissed"), count);
  advance(2.2);
  EXPECT_EQ(goneCount, 1);
  messages.show(Activity::failure("replaced"), count);
  advance(1);
  messages.begin(Activity::Kind::pasting);
  EXPECT_EQ(goneCount, 2);
  advance(10);
  EXPECT_EQ(goneCount, 2);
}

}  // namespace
}  // namespace quillo::test
