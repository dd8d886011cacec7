#include "QuilloCore/Semantics/InterfaceObservationProcessor.h"

#include <gtest/gtest.h>

#include <memory>

#include "QuilloCore/Concurrency/AsyncOperationDeadlineError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

AccessibilitySnapshot makeSnapshot(AccessibilityRootKind rootKind, std::string role) {
  AccessibilitySnapshot snapshot;
  snapshot.rootKind = rootKind;
  AccessibilityNode root;
  root.role = std::move(role);
  root.attributes.push_back({.name = "AXTitle", .value = std::string("Inbox")});
  snapshot.nodes.push_back(std::move(root));
  snapshot.deriveFields();
  return snapshot;
}

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

TEST_F(InterfaceObservationProcessing, yieldsTheObservationUnderAnApplicationAndItsText) {
  for (const auto& [rootKind, role, rootID] :
       {std::tuple{AccessibilityRootKind::focusedWindow, "AXWindow", "application-root"},
        std::tuple{AccessibilityRootKind::application, "AXApplication", ""}}) {
    const AccessibilitySnapshot snapshot = makeSnapshot(rootKind, role);
    const auto task = process(snapshot);
    const auto processed = runBlocking([&] { return task.value(); });
    EXPECT_EQ(AccessibilitySemanticNormalizer::normalize(snapshot, {}), processed.observation);
    EXPECT_EQ(InterfaceObservationLLMRenderer::render(processed.observation), processed.contextText);
    ASSERT_FALSE(processed.observation.elements.empty());
    EXPECT_EQ(*rootID != '\0', processed.observation.elements.front().id == "application-root") << role;
  }
}

TEST_F(InterfaceObservationProcessing, endsAtItsDeadlineAndWithItsCaller) {
  const auto mayGoOn = std::make_shared<Gate>();
  worker_.post([mayGoOn] { mayGoOn->pass(); });

  const auto late = process(makeSnapshot(AccessibilityRootKind::focusedWindow, "AXWindow"));
  clock_.waitForTimers(1);
  clock_.advance(InterfaceObservationProcessor::timeout);
  EXPECT_THROW(runBlocking([&] { return late.value(); }), AsyncOperationDeadlineError);

  const auto unwanted = process(makeSnapshot(AccessibilityRootKind::focusedWindow, "AXWindow"));
  clock_.waitForTimers(1);
  unwanted.cancel();
  EXPECT_THROW(runBlocking([&] { return unwanted.value(); }), OperationCancelled);
  mayGoOn->open();
}

}  // namespace
}  // namespace quillo::test
