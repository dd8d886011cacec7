#include "QuilloCore/Concurrency/TaskGroup.h"

#include <gtest/gtest.h>

#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

class TaskGroupTest : public testing::Test {
 protected:
  Task<> pause(double seconds) {
    Task<> sleeping = sleepFor(clock, seconds);
    co_await std::move(sleeping);
    ++endCount;
  }

  Task<> startAnotherAfter(double seconds) {
    Task<> pausing = pause(seconds);
    co_await std::move(pausing);
    group.start([this] { return pause(1); });
  }

  void advance(double seconds) {
    loop.runReady();
    clock.advance(seconds);
    loop.runReady();
  }

  ManualLoop loop;
  VirtualMonotonicClock clock;
  TaskGroup group{loop.executor()};
  int endCount = 0;
};

TEST_F(TaskGroupTest, isEmptyWhenItsLastTaskHasEnded) {
  group.start([this] { return pause(1); });
  group.start([this] { return startAnotherAfter(2); });
  TaskGroup watchers(loop.executor());
  watchers.start([this] { return group.whenEmpty(); });
  watchers.start([this] { return group.whenEmpty(); });
  advance(1);
  advance(1);
  EXPECT_EQ(endCount, 2);
  EXPECT_FALSE(watchers.isEmpty()) << "a task has started another one";
  advance(1);
  EXPECT_TRUE(group.isEmpty());
  EXPECT_TRUE(watchers.isEmpty());
}

TEST_F(TaskGroupTest, cancellingEndsWhatWaitsAndWhatHasNotBegun) {
  group.start([this] { return pause(100); });
  loop.runReady();
  const SpawnedTask<void> spawned = group.spawn([this] { return pause(100); });
  group.cancelAll();
  loop.runReady();
  EXPECT_TRUE(group.isEmpty());
  EXPECT_EQ(endCount, 0);
  EXPECT_EQ(clock.timerCount(), 0U);
}

}  // namespace
}  // namespace quillo::test
