#include "QuilloCore/Capture/AccessibilityContextCapturer.h"

#include "CaptureFixture.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

class ContextCapturer : public CaptureTest {
 protected:
  Gate isHanging;
  Gate mayAnswer;
  VirtualMonotonicClock clock;
  AccessibilityContextCapturer capturer{application, wallClock, {.captureTimeout = 7.5}};
  SerialQueue queue{"org.quillo.Quillo.accessibility-capture"};
};

TEST_F(ContextCapturer, readsTheWindowOnItsQueue) {
  const auto expected = capture("window 'Inbox' number=7\n  button 'Reply'");
  EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }), expected);
  target.windowID = 8;
  EXPECT_THROW(runBlocking([&] { return capturer.capture(clock, queue, target); }), AccessibilityCaptureError);
}

TEST_F(ContextCapturer, leavesAnApplicationThatHangsAtTheDeadline) {
  application.addWindows("window 'Inbox' number=7");
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    if (call.operation != "actionNames") return std::nullopt;
    isHanging.open();
    mayAnswer.pass();
    return std::nullopt;
  };
  SerialQueue caller("caller");
  const auto hanging = spawnTask(caller.executor(), [&] { return capturer.capture(clock, queue, target); });
  isHanging.pass();
  clock.advance(7.5);
  try {
    runBlocking([&] { return hanging.value(); });
    FAIL();
  } catch (const AccessibilityCaptureError& error) {
    EXPECT_EQ(error.errorDescription(), "Accessibility capture exceeded its 7.5-second safety deadline.");
  }
  mayAnswer.open();
}

// The second question for a process comes after the walk, when elements have gone; then first the application is asked.
TEST_F(ContextCapturer, windowThatHasGoneIsNoCapture) {
  struct GoneCase {
    int goneAtQuestion;
    const char* error;
  };
  application.addWindows("window 'Inbox' number=7\n  button 'Reply'");
  for (const GoneCase& gone :
       {GoneCase{2, "The Accessibility API could not connect to process 400."},
        GoneCase{3, "Accessibility could not resolve frozen window 7 in PID 400"}, GoneCase{4, ""}}) {
    int questions = 0;
    application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
      const bool isQuestion = call.operation == "processIdentifier";
      if (call.operation == "actionNames" || (isQuestion && ++questions == gone.goneAtQuestion)) {
        return AccessibilityErrorCode::invalidUIElement;
      }
      return std::nullopt;
    };
    std::string error;
    try {
      EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }).nodes.size(), 2U);
    } catch (const AccessibilityCaptureError& thrown) {
      error = thrown.errorDescription();
    }
    EXPECT_EQ(error.substr(0, std::string(gone.error).size()), gone.error);
    EXPECT_EQ(error.empty(), std::string(gone.error).empty()) << error;
  }
}

}  // namespace
}  // namespace quillo::test
