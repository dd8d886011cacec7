#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/WorkerPool.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

Task<std::string> yieldText(std::string text) {
  co_return text;
}

Task<std::string> failWith(std::string message) {
  throw std::runtime_error(message);
  co_return "";
}

/// What a test gives to an operation to hold it up and to hear from it.
struct Probe {
  Gate hasBegun;
  Gate mayEnd;
  Gate hasEnded;
  std::atomic<bool> wasCancelled = false;
};

Task<std::string> blockWithoutLookingUp(std::shared_ptr<Probe> probe, bool throwsAtTheEnd) {
  probe->hasBegun.open();
  probe->mayEnd.pass();
  probe->hasEnded.open();
  if (throwsAtTheEnd) throw std::runtime_error("too late");
  co_return "too late";
}

Task<std::string> waitUntilCancelled(std::shared_ptr<Probe> probe) {
  probe->hasBegun.open();
  auto never = std::make_shared<PendingResult<void>>();
  Task<> waiting = waitFor(never);
  try {
    co_await std::move(waiting);
  } catch (const OperationCancelled&) {
    probe->wasCancelled = true;
    probe->hasEnded.open();
    throw;
  }
  co_return "";
}

class AsyncOperationDeadline : public testing::Test {
 protected:
  /// Runs the operation under a deadline, in a task on the caller's queue.
  template <class Operation>
  SpawnedTask<std::string> call(double timeout, const Operation& operation) {
    return spawnTask(caller_.executor(), [this, timeout, operation] {
      return runCancellableAsyncOperation(clock_, workers_.makeExecutor(), timeout, operation);
    });
  }

  /// The value or what stands for the error.
  static std::string endOf(const SpawnedTask<std::string>& task) {
    try {
      return runBlocking([&] { return task.value(); });
    } catch (const OperationCancelled&) {
      return "cancelled";
    } catch (const AsyncOperationDeadlineError& error) {
      return error.errorDescription();
    } catch (const std::runtime_error& error) {
      return std::string("failed: ") + error.what();
    }
  }

  VirtualMonotonicClock clock_;
  WorkerPool workers_;
  SerialQueue caller_{"caller"};
};

TEST_F(AsyncOperationDeadline, theOperationsEndIsTheCallersAndTheTimerGoes) {
  EXPECT_EQ("done", endOf(call(1, [] { return yieldText("done"); })));
  EXPECT_EQ("failed: broken", endOf(call(1, [] { return failWith("broken"); })));
  EXPECT_EQ(0U, clock_.timerCount());
  clock_.advance(10);
}

TEST_F(AsyncOperationDeadline, theCallerIsReleasedAlthoughTheOperationRunsOn) {
  for (const bool throwsAtTheEnd : {false, true}) {
    const auto probe = std::make_shared<Probe>();
    const auto task = call(0.5, [=] { return blockWithoutLookingUp(probe, throwsAtTheEnd); });
    probe->hasBegun.pass();
    clock_.waitForTimers(1);
    clock_.advance(0.499);
    EXPECT_EQ(1U, clock_.timerCount()) << "not yet";
    clock_.advance(0.001);
    EXPECT_EQ("The operation exceeded its 0.5-second safety deadline.", endOf(task));
    probe->mayEnd.open();  // what it yields now is dropped
    probe->hasEnded.pass();
  }
}

TEST_F(AsyncOperationDeadline, anOperationThatWaitsIsCancelledAtTheDeadline) {
  const auto probe = std::make_shared<Probe>();
  const auto task = call(14, [=] { return waitUntilCancelled(probe); });
  probe->hasBegun.pass();
  clock_.advance(14);
  EXPECT_EQ("The operation exceeded its 14-second safety deadline.", endOf(task));
  probe->hasEnded.pass();
  EXPECT_TRUE(probe->wasCancelled);
}

TEST_F(AsyncOperationDeadline, cancellingTheCallerReleasesItAndCancelsTheOperation) {
  const auto waiting = std::make_shared<Probe>();
  const auto waitingTask = call(1, [=] { return waitUntilCancelled(waiting); });
  waiting->hasBegun.pass();
  waitingTask.cancel();
  EXPECT_EQ("cancelled", endOf(waitingTask));
  waiting->hasEnded.pass();
  EXPECT_TRUE(waiting->wasCancelled);

  const auto blocking = std::make_shared<Probe>();
  const auto blockingTask = call(1, [=] { return blockWithoutLookingUp(blocking, false); });
  blocking->hasBegun.pass();
  blockingTask.cancel();
  EXPECT_EQ("cancelled", endOf(blockingTask));
  clock_.advance(10);
  blocking->mayEnd.open();
}

/// Goes on after its cancellation, as a clean-up may.
Task<std::string> callWhenCancelled(MonotonicClock& clock, TaskExecutor executor, std::shared_ptr<Probe> probe) {
  Task<std::string> waiting = waitUntilCancelled(probe);
  try {
    co_await std::move(waiting);
  } catch (const OperationCancelled&) {  // NOLINT(bugprone-empty-catch): the next call is to notice
  }
  const auto operation = [probe] { return blockWithoutLookingUp(probe, false); };
  Task<std::string> calling = runCancellableAsyncOperation(clock, executor, 1, operation);
  co_return co_await std::move(calling);
}

TEST_F(AsyncOperationDeadline, aCallerThatIsAlreadyCancelledStartsNothing) {
  const auto probe = std::make_shared<Probe>();
  const auto task =
      spawnTask(caller_.executor(), [&, probe] { return callWhenCancelled(clock_, workers_.makeExecutor(), probe); });
  probe->hasBegun.pass();
  task.cancel();
  EXPECT_EQ("cancelled", endOf(task));
  EXPECT_EQ(0U, clock_.timerCount());
}

TEST_F(AsyncOperationDeadline, exactlyOneOutcomeArrivesWhenAllThreeMeet) {
  int values = 0;
  int timeouts = 0;
  int cancellations = 0;
  for (int round = 0; round < 300; ++round) {
    const auto probe = std::make_shared<Probe>();
    const auto task = call(1, [=] { return blockWithoutLookingUp(probe, false); });
    probe->hasBegun.pass();
    std::thread canceller([&] { task.cancel(); });
    std::thread operation([&] { probe->mayEnd.open(); });
    clock_.advance(2);
    const std::string end = endOf(task);
    values += end == "too late" ? 1 : 0;
    timeouts += end == "The operation exceeded its 1-second safety deadline." ? 1 : 0;
    cancellations += end == "cancelled" ? 1 : 0;
    canceller.join();
    operation.join();
  }
  EXPECT_EQ(300, values + timeouts + cancellations);
}

Task<std::string> sleepTwice(MonotonicClock& clock) {
  Task<> first = sleepFor(clock, 2);
  co_await std::move(first);
  Task<> second = sleepFor(clock, 3);
  co_await std::move(second);
  co_return std::to_string(clock.uptimeNanoseconds());
}

TEST_F(AsyncOperationDeadline, sleepingFollowsTheClockAndEndsWithCancellation) {
  VirtualMonotonicClock clock(0);
  const auto sleeping = spawnTask(caller_.executor(), [&] { return sleepTwice(clock); });
  clock.waitForTimers(1);
  clock.advance(2.5);
  clock.waitForTimers(1);
  clock.advance(10);
  // Two and then three seconds; the task may read the clock while it is still being advanced.
  EXPECT_GE(std::stoull(endOf(sleeping)), 5'000'000'000U);

  const auto cancelled = spawnTask(caller_.executor(), [&] { return sleepTwice(clock); });
  clock.waitForTimers(1);
  cancelled.cancel();
  EXPECT_EQ("cancelled", endOf(cancelled));
  EXPECT_EQ(0U, clock.timerCount());
}

TEST(Uptime, deadlinesNeitherWrapNorLieInThePast) {
  constexpr std::uint64_t latest = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(1'500'000'007U, uptimeAfter(7, 1.5));
  for (const double seconds : {0.0, -1.0, std::nan("")}) EXPECT_EQ(7U, uptimeAfter(7, seconds));
  for (const double seconds : {1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(latest, uptimeAfter(7, seconds));
  }
  EXPECT_EQ(latest, uptimeAfter(latest - 5, 1));
}

}  // namespace
}  // namespace quillo::test
