#include "QuilloCore/Semantics/InterfaceObservationProcessor.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "QuilloCore/Concurrency/AsyncOperationDeadlineError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

class InterfaceObservationProcessing : public testing::Test {
 protected:
  SpawnedTask<ProcessedInterfaceObservation> process(AccessibilitySnapshot snapshot) {
    return spawnTask(caller_.executor(), [this, snapshot = std::move(snapshot)] {
      return InterfaceObservationProcessor::process(clock_, worker_.executor(), snapshot);
    });
  }

  VirtualMonotonicClock clock_;
  SerialQueue worker_{"worker"};
  SerialQueue caller_{"caller"};
};

TEST_F(InterfaceObservationProcessing, yieldsTheObservationWithBothOptionsAndItsText) {
  for (const auto& [notation, expected] :
       {std::pair{"window 'Inbox'\n  button 'Reply'",
                  "- application\n  0 window \"Inbox\"\n    1 button \"Reply\" {press?}\n"},
        std::pair{"application 'Mail'\n  button 'Reply'", "0 application \"Mail\"\n  1 button \"Reply\" {press?}\n"}}) {
    const auto task = process(makeSnapshot(notation));
    const auto processed = runBlocking([&] { return task.value(); });
    EXPECT_EQ(describe(processed.observation), expected);
    EXPECT_EQ(InterfaceObservationLLMRenderer::render(processed.observation), processed.contextText);
  }
}

TEST_F(InterfaceObservationProcessing, endsAtItsDeadlineAndWithItsCaller) {
  const auto mayGoOn = std::make_shared<Gate>();
  worker_.post([mayGoOn] { mayGoOn->pass(); });

  const auto late = process(makeSnapshot("window"));
  clock_.waitForTimers(1);
  clock_.advance(10);
  try {
    runBlocking([&] { return late.value(); });
    ADD_FAILURE() << "it did not end";
  } catch (const AsyncOperationDeadlineError& error) {
    EXPECT_EQ(error, AsyncOperationDeadlineError(AsyncOperationDeadlineError::Exceeded{10}));
  }

  const auto unwanted = process(makeSnapshot("window"));
  clock_.waitForTimers(1);
  unwanted.cancel();
  EXPECT_THROW(runBlocking([&] { return unwanted.value(); }), OperationCancelled);
  mayGoOn->open();
}

}  // namespace
}  // namespace quillo::test
