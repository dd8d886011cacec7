#include "QuilloCore/Capture/AccessibilityContextCapturer.h"

#include "CaptureFixture.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "Tests/Support/Gate.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

/// The frozen window, whose frame moves on with each look.
class MovingWindow final : public WindowListProviding {
 public:
  explicit MovingWindow(const WindowCaptureTarget& target) : frames{target.windowFrame} {
    window.windowID = target.windowID;
    window.processIdentifier = target.processIdentifier;
  }
  std::vector<WindowListEntry> onScreenFrontToBack() override {
    if (isUnreadable) throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::WindowListUnavailable{});
    window.bounds = frames.front();
    if (frames.size() > 1) frames.erase(frames.begin());
    ++lookCount;
    return {window};
  }
  WindowListEntry window;
  std::vector<ArtifactRect> frames;
  bool isUnreadable = false;
  int lookCount = 0;
};

class ContextCapturer : public CaptureTest {
 protected:
  VirtualMonotonicClock clock;
  MovingWindow windowList{target};
  AccessibilityContextCapturer capturer{application, windowList, wallClock, {.captureTimeout = 7.5}};
  SerialQueue queue{"org.quillo.Quillo.accessibility-capture"};
};

TEST_F(ContextCapturer, readsTheWindowOnItsQueue) {
  const auto expected = capture("window 'Inbox' number=7\n  button 'Reply'");
  EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }), expected);
  target.windowID = 8;
  EXPECT_THROW(runBlocking([&] { return capturer.capture(clock, queue, target); }), AccessibilityCaptureError);
}

TEST_F(ContextCapturer, leavesAnApplicationThatHangsAndAsksItNothingMore) {
  application.addWindows("window 'Inbox' number=7\n  button 'Reply'");
  for (const bool isCancelled : {false, true}) {
    Gate isHanging;
    Gate mayAnswer;
    application.calls.clear();
    application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
      if (call.operation != "actionNames") return std::nullopt;
      isHanging.open();
      mayAnswer.pass();
      return std::nullopt;
    };
    SerialQueue caller("caller");
    const auto hanging = spawnTask(caller.executor(), [&] { return capturer.capture(clock, queue, target); });
    isHanging.pass();
    const std::size_t callCount = application.calls.size();
    isCancelled ? hanging.cancel() : clock.advance(7.5);
    std::string end;
    try {
      runBlocking([&] { return hanging.value(); });
    } catch (const std::exception& error) {
      end = error.what();
    }
    EXPECT_EQ(end, isCancelled ? OperationCancelled().what()
                               : "Accessibility capture exceeded its 7.5-second safety deadline.");
    mayAnswer.open();
    runBlocking([&] { return queue.run([] {}); });  // behind the walk
    EXPECT_EQ(application.calls.size(), callCount);
  }
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

TEST_F(ContextCapturer, windowIsFoundWhereItStandsByNow) {
  const ArtifactRect frozen = target.windowFrame;
  const ArtifactRect wider{.x = 5, .y = 5, .width = 600, .height = 300};
  struct FrameCase {
    const char* label;
    std::vector<ArtifactRect> listed;
    bool isFound;
    int lookCount;
  };
  application.addWindows("window 'Inbox' frame=5,5,600,300\n  button 'Reply'\nwindow 'Draft' frame=0,0,200,100");
  for (const FrameCase& moved : {FrameCase{"resized", {wider}, true, 1},
                                 FrameCase{"still being resized", {{0, 0, 450, 300}, {2, 2, 500, 300}, wider}, true, 3},
                                 FrameCase{"its program has not heard", {{0, 0, 450, 300}}, false, 5},
                                 FrameCase{"not resized", {frozen}, false, 1}}) {
    windowList.frames = moved.listed;
    windowList.lookCount = 0;
    bool isFound = true;
    try {
      EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }).nodes.size(), 2U) << moved.label;
    } catch (const AccessibilityCaptureError&) {
      isFound = false;
    }
    EXPECT_EQ(isFound, moved.isFound) << moved.label;
    EXPECT_EQ(windowList.lookCount, moved.lookCount) << moved.label;
  }
  target.windowFrame = {.x = 0, .y = 0, .width = 200, .height = 100};
  target.windowTitle = "Draft";
  windowList.frames = {{0, 0, 450, 300}};
  EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }).nodes.size(), 1U)
      << "a program that has not heard of it is in the frozen place";
  windowList.isUnreadable = true;
  EXPECT_EQ(runBlocking([&] { return capturer.capture(clock, queue, target); }).nodes.size(), 1U);
}

}  // namespace
}  // namespace quillo::test
