#include "QuilloApp/Interface/MainLoop.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "OffscreenApplication.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo::test {
namespace {

using namespace std::chrono_literals;

class MainLoopTest : public testing::Test {
  OffscreenApplication application_;
};

TEST_F(MainLoopTest, jobsOfManyThreadsRunOnTheLoopInTheOrderOfEachThread) {
  constexpr int perThread = 500;
  MainLoop loop;
  const auto here = std::this_thread::get_id();
  std::vector<std::pair<int, int>> seen;
  bool ranElsewhere = false;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&, thread, queue = loop.executor().queue()] {
      for (int number = 0; number < perThread; ++number) {
        queue->post([&, thread, number] {
          ranElsewhere |= std::this_thread::get_id() != here;
          seen.emplace_back(thread, number);
          if (seen.size() == 4UZ * perThread) QCoreApplication::exit();
        });
      }
    });
  }
  QTimer::singleShot(10'000, qApp, [] { QCoreApplication::exit(1); });
  EXPECT_EQ(0, QCoreApplication::exec());
  EXPECT_FALSE(ranElsewhere);
  std::vector<int> next(4, 0);
  for (const auto& [thread, number] : seen) EXPECT_EQ(next[static_cast<std::size_t>(thread)]++, number);
}

TEST_F(MainLoopTest, aJobThatAlwaysPostsAnotherLeavesTheUserTheirTurn) {
  int turns = 0;
  bool isOver = false;
  std::function<void()> again;
  MainLoop loop;
  const auto queue = loop.executor().queue();
  again = [&] {
    ++turns;
    if (!isOver) queue->post(again);
  };
  queue->post(again);
  QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
  EXPECT_EQ(0, QCoreApplication::exec());
  EXPECT_LT(turns, 1000);
  isOver = true;  // the loop's end runs what is left
}

TEST_F(MainLoopTest, aJobsOwnEventLoopRunsNoOtherJobInsideIt) {
  MainLoop loop;
  std::vector<std::string> events;
  loop.executor().queue()->post([&] {
    loop.executor().queue()->post([&] {
      events.emplace_back("second");
      QCoreApplication::exit();
    });
    QEventLoop nested;
    QTimer::singleShot(20, &nested, [&] { nested.quit(); });
    nested.exec();
    events.emplace_back("first");
  });
  QTimer::singleShot(10'000, qApp, [] { QCoreApplication::exit(1); });
  EXPECT_EQ(0, QCoreApplication::exec());
  EXPECT_EQ((std::vector<std::string>{"first", "second"}), events);
}

Task<> waitForEver(bool& wasCancelled) {
  auto never = std::make_shared<PendingResult<void>>();
  Task<> waiting = waitFor(never);
  try {
    co_await std::move(waiting);
  } catch (const OperationCancelled&) {
    wasCancelled = true;
  }
}

TEST_F(MainLoopTest, cancelledTasksEndWithoutTheEventLoopAndLatePostsAreDropped) {
  bool wasCancelled = false;
  bool hasRun = false;
  std::optional<TaskExecutor> executor;
  {
    MainLoop loop;
    executor = loop.executor();
    TaskGroup tasks(loop.executor());
    tasks.start([&wasCancelled] { return waitForEver(wasCancelled); });
    EXPECT_FALSE(loop.runUntil([&] { return tasks.isEmpty(); }, 20ms)) << "it waits for ever";
    tasks.cancelAll();
    EXPECT_TRUE(loop.runUntil([&] { return tasks.isEmpty(); }, 10s));
    EXPECT_TRUE(wasCancelled);
  }
  executor->queue()->post([&] { hasRun = true; });
  EXPECT_FALSE(hasRun);
}

}  // namespace
}  // namespace quillo::test
