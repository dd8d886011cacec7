#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"
#include "QuilloCore/Concurrency/WorkerPool.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;

TEST(SerialQueue, runsJobsInOrderAndAllOfThemBeforeItsEnd) {
  std::vector<int> ran;
  {
    Gate mayGoOn;
    SerialQueue queue("org.quillo.tests.serial");
    queue.post([&] { mayGoOn.pass(); });
    for (int i = 0; i < 3; ++i) queue.post([&ran, i] { ran.push_back(i); });
    queue.post([&] { queue.post([&ran] { ran.push_back(3); }); });
    mayGoOn.open();
  }
  EXPECT_THAT(ran, ElementsAre(0, 1, 2, 3));
}

TEST(SerialQueue, aTaskGetsWhatAFunctionReturnsOrThrowsThere) {
  SerialQueue queue("worker");
  const auto here = std::this_thread::get_id();
  EXPECT_TRUE(runBlocking([&] { return queue.run([&] { return std::this_thread::get_id() != here; }); }));
  EXPECT_THROW(runBlocking([&] { return queue.run([] { throw std::invalid_argument("no"); }); }),
               std::invalid_argument);
}

TEST(SerialQueue, aCancelledWaiterIsReleasedAndItsWaitingFunctionDropped) {
  std::atomic<bool> ran = false;
  {
    Gate mayGoOn;
    SerialQueue queue("worker");
    queue.post([&] { mayGoOn.pass(); });
    BlockingLoop loop;
    loop.cancel();
    EXPECT_THROW(loop.run([&] { return queue.run([&] { ran = true; }); }), OperationCancelled);
    mayGoOn.open();
  }
  EXPECT_FALSE(ran);
}

TEST(SerialQueue, anExecutorThatOutlivesItTakesJobsToNowhere) {
  std::weak_ptr<int> held;
  auto queue = std::make_unique<SerialQueue>("worker");
  const TaskExecutor executor = queue->executor();
  queue.reset();
  auto value = std::make_shared<int>(1);
  held = value;
  executor.queue()->post([value = std::move(value)] { ADD_FAILURE() << "ran after the end"; });
  EXPECT_TRUE(held.expired());
}

Task<int> add(SerialQueue& queue, int a, int b) {
  Task<int> left = queue.run([a] { return a; });
  const int first = co_await std::move(left);
  Task<int> right = queue.run([b] { return b; });
  co_return first + co_await std::move(right);
}

TEST(WorkerPool, tasksThatBlockHoldUpNoOther) {
  SerialQueue queue("worker");
  Gate mayEnd;
  {
    WorkerPool workers;
    for (int i = 0; i < 10; ++i) workers.makeExecutor().queue()->post([&] { mayEnd.pass(); });
    const auto task = spawnTask(workers.makeExecutor(), [&] { return add(queue, 2, 3); });
    EXPECT_EQ(5, runBlocking([&] { return task.value(); }));
    mayEnd.open();
  }
}

TEST(WorkerPool, oneExecutorRunsItsJobsInOrderAndTheEndWaitsForAll) {
  std::vector<int> ran;
  std::vector<int> expected;
  {
    WorkerPool workers;
    const TaskExecutor executor = workers.makeExecutor();
    for (int i = 0; i < 1000; ++i) {
      expected.push_back(i);
      executor.queue()->post([&ran, i] { ran.push_back(i); });
    }
  }
  EXPECT_EQ(expected, ran);
}

Task<> park(std::shared_ptr<PendingResult<void>> parked) {
  Task<> waiting = waitFor(parked);
  co_await std::move(waiting);
}

TEST(WorkerPool, aTaskThatIsStillParkedAtTheEndIsFreedWhenItsResultComes) {
  auto parked = std::make_shared<PendingResult<void>>();
  {
    WorkerPool workers;
    startTask(workers.makeExecutor(), [parked] { return park(parked); });
  }
  const std::weak_ptr<PendingResult<void>> watched = parked;
  parked->resolve({});
  parked.reset();
  EXPECT_TRUE(watched.expired());
}

TEST(BlockingLoop, isCancelledFromAnotherThreadAndByASignal) {
  const auto waitForever = [] { return park(std::make_shared<PendingResult<void>>()); };
  BlockingLoop loop;
  std::thread canceller([&] { loop.cancel(); });
  EXPECT_THROW(loop.run(waitForever), OperationCancelled);
  canceller.join();

  BlockingLoop interrupted;
  {
    const TerminationSignals signals([&] { interrupted.cancel(); });
    kill(getpid(), SIGTERM);
    EXPECT_THROW(interrupted.run(waitForever), OperationCancelled);
  }
  SerialQueue queue("worker");
  EXPECT_EQ(5, runBlocking([&] { return add(queue, 2, 3); })) << "a new loop is not cancelled";
}

TEST(SystemMonotonicClock, makesItsCallsInTheOrderOfTheirDeadlines) {
  SystemMonotonicClock clock;
  std::vector<int> called;
  Gate isDone;
  const std::uint64_t now = clock.uptimeNanoseconds();
  constexpr std::uint64_t millisecond = 1'000'000;
  const Timer last = clock.callAt(now + 4 * millisecond, [&] { isDone.open(); });
  const Timer second = clock.callAt(now + 2 * millisecond, [&] { called.push_back(2); });
  const Timer first = clock.callAt(now, [&] { called.push_back(1); });
  const Timer never = clock.callAt(~std::uint64_t{0}, [&] { called.push_back(4); });
  {
    const Timer takenBack = clock.callAt(now + 3 * millisecond, [&] { called.push_back(3); });
  }
  isDone.pass();
  EXPECT_THAT(called, ElementsAre(1, 2));
  EXPECT_GE(clock.uptimeNanoseconds(), now + 4 * millisecond);
}

}  // namespace
}  // namespace quillo::test
