#include "QuilloCore/Capture/AccessibilityCaptureRequest.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

/// Stands for a walk that is stuck in a call into its target.
struct StuckWalk {
  Gate hasBegun;
  Gate callMayReturn;
  Gate hasEnded;
  std::string end;

  std::string run(const SharedAccessibilityCaptureControl& control) {
    hasBegun.open();
    callMayReturn.pass();
    try {
      control->checkpoint();
      end = "went on";
    } catch (const std::exception& error) {
      end = error.what();
    }
    hasEnded.open();
    return "late";
  }
};

class AccessibilityCaptureRequest : public testing::Test {
 protected:
  template <class Operation>
  SpawnedTask<std::string> capture(double timeout, const Operation& operation) {
    return spawnTask(caller_.executor(), [this, timeout, operation] {
      return runCancellableAccessibilityOperation(clock_, queue_, timeout, operation);
    });
  }

  static std::string endOf(const SpawnedTask<std::string>& task) {
    try {
      return runBlocking([&] { return task.value(); });
    } catch (const std::exception& error) {
      return error.what();
    }
  }

  VirtualMonotonicClock clock_;
  SerialQueue queue_{"org.quillo.Quillo.accessibility-capture"};
  SerialQueue caller_{"caller"};
};

TEST_F(AccessibilityCaptureRequest, theWalksEndIsTheCallers) {
  EXPECT_EQ("walked", endOf(capture(15, [](const auto&) { return std::string("walked"); })));
  EXPECT_EQ("broken", endOf(capture(15, [](const auto&) -> std::string { throw std::runtime_error("broken"); })));
  EXPECT_EQ(0U, clock_.timerCount());
}

TEST_F(AccessibilityCaptureRequest, aStuckWalkIsAbandonedAtTheDeadlineAndTheNextWaitsForIt) {
  const auto walk = std::make_shared<StuckWalk>();
  const auto stuck = capture(7.5, [walk](const auto& control) { return walk->run(control); });
  walk->hasBegun.pass();
  clock_.advance(7.5);
  const std::string timedOut = "Accessibility capture exceeded its 7.5-second safety deadline.";
  EXPECT_EQ(timedOut, endOf(stuck));

  const auto next = capture(15, [walk](const auto&) { return walk->end; });
  clock_.waitForTimers(1);
  walk->callMayReturn.open();
  EXPECT_EQ(timedOut, endOf(next)) << "the first walk has learnt of its deadline before the second begins";
}

TEST_F(AccessibilityCaptureRequest, aCancelledCallerIsReleasedAtOnceAndTheWalkStopsAtItsCheckpoint) {
  const auto walk = std::make_shared<StuckWalk>();
  const auto stuck = capture(15, [walk](const auto& control) { return walk->run(control); });
  walk->hasBegun.pass();
  stuck.cancel();
  EXPECT_EQ(OperationCancelled().what(), endOf(stuck));
  walk->callMayReturn.open();
  walk->hasEnded.pass();
  EXPECT_EQ(OperationCancelled().what(), walk->end);
}

TEST_F(AccessibilityCaptureRequest, aDeadlineInThePastStartsNoWalk) {
  for (const double timeout : {0.0, -3.0}) {
    const auto end = endOf(capture(timeout, [](const auto&) -> std::string { return "walked"; }));
    EXPECT_EQ("Accessibility capture exceeded its 0-second safety deadline.", end);
  }
}

}  // namespace
}  // namespace quillo::test
