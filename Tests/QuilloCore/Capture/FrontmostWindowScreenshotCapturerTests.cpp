#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"
#include "Tests/Support/CaptureOfLetter.h"
#include "Tests/Support/FakeWindowImages.h"
#include "Tests/Support/VirtualMonotonicClock.h"

namespace quillo::test {
namespace {

CapturedWindowMetadata window(std::uint32_t windowID, std::int32_t processIdentifier) {
  return screenshotOfLetter(windowID, processIdentifier).window;
}

WindowCaptureTarget frozen(std::uint32_t windowID, std::int32_t processIdentifier) {
  return makeWindowCaptureTarget(frozenLetter(windowID, processIdentifier));
}

class ScreenshotCapturer : public testing::Test {
 protected:
  SpawnedTask<WindowScreenshotCapture> start(const WindowCaptureTarget& target) {
    return spawnTask(caller_.executor(), [this, target] { return capturer_.capture(target); });
  }
  static std::string endOf(const SpawnedTask<WindowScreenshotCapture>& task) {
    try {
      return "captured " + runBlocking([&] { return task.value(); }).window.title;
    } catch (const std::exception& error) {
      return error.what();
    }
  }
  std::string endOfCapture(const WindowCaptureTarget& target) { return endOf(start(target)); }

  WindowCaptureTarget target_ = frozen(11, 400);
  VirtualMonotonicClock clock_;
  std::shared_ptr<FakeWindowImages> display_ = std::make_shared<FakeWindowImages>(window(11, 400));
  SerialQueue queue_{"screenshot"};
  SerialQueue caller_{"caller"};
  FrontmostWindowScreenshotCapturer capturer_{display_, clock_, queue_};
};

TEST_F(ScreenshotCapturer, frozenWindowsPictureIsAPNG) {
  const WindowScreenshotCapture capture = runBlocking([&] { return capturer_.capture(target_); });
  EXPECT_EQ(capture.pngData.substr(0, 8), "\x89PNG\r\n\x1A\n");
  EXPECT_EQ(capture.pixelWidth, 2);
  EXPECT_EQ(capture.pixelHeight, 1);
  EXPECT_EQ(capture.window, display_->windows[0]);
  EXPECT_EQ(display_->calls, "allowed list image ");
}

TEST_F(ScreenshotCapturer, eachStepsFailureHasItsNameAndEndsTheCapture) {
  EXPECT_EQ(endOfCapture(frozen(11, 0)), "The capture target has an invalid process identifier (0).");
  EXPECT_EQ(endOfCapture(frozen(0, 400)), "The capture target has an invalid window identifier (0).");
  EXPECT_EQ(display_->calls, "");

  display_->allowed = false;
  EXPECT_EQ(endOfCapture(target_), "Quillo needs Screen Recording permission before it can capture another app.");
  EXPECT_EQ(display_->calls, "allowed ");
  display_->allowed = true;

  display_->failsIn = "list";
  EXPECT_EQ(endOfCapture(target_), "ScreenCaptureKit could not enumerate captureable windows: the display is gone");
  display_->failsIn = "image";
  EXPECT_EQ(endOfCapture(target_), "ScreenCaptureKit could not capture window 11: the display is gone");
  display_->failsIn = "";
  display_->picture = BitmapImage{.width = 2, .height = 2, .pixels = {1}};
  EXPECT_EQ(endOfCapture(target_), "Quillo could not encode the captured window as PNG.");
  display_->picture.reset();
  EXPECT_EQ(endOfCapture(target_), "ScreenCaptureKit returned no image for window 11.");
}

TEST_F(ScreenshotCapturer, noOtherWindowStandsInForTheFrozenOne) {
  display_->windows = {window(12, 400), window(11, 401)};
  EXPECT_EQ(endOfCapture(target_), "The frozen window 11 for Editor is no longer available to ScreenCaptureKit.");
  target_.applicationName.reset();
  EXPECT_EQ(endOfCapture(target_), "The frozen window 11 for PID 400 is no longer available to ScreenCaptureKit.");
}

TEST_F(ScreenshotCapturer, displayThatDoesNotAnswerIsGivenUp) {
  const struct {
    const char* step;
    double seconds;
    const char* message;
  } cases[] = {{"list", 4, "ScreenCaptureKit did not enumerate captureable windows within 4 seconds."},
               {"image", 8, "ScreenCaptureKit did not capture window 11 within 8 seconds."}};
  for (const auto& [step, seconds, message] : cases) {
    const auto display = std::make_shared<FakeWindowImages>(window(11, 400));
    display->waitsIn = step;
    SerialQueue queue("stuck");
    FrontmostWindowScreenshotCapturer capturer(display, clock_, queue);
    const auto task = spawnTask(caller_.executor(), [&capturer, this] { return capturer.capture(target_); });
    display->waits.pass();
    clock_.advance(seconds);
    EXPECT_EQ(endOf(task), message);
    display->mayGoOn.open();
  }
}

TEST(WindowScreenshotCaptureError, namesTheProcessByItsNameOrItsNumber) {
  using Error = WindowScreenshotCaptureError;
  const Error named(Error::NoSubstantialWindow{9, "Mail"});
  EXPECT_EQ(named.errorDescription(), "No visible captureable window was found for Mail (PID 9).");
  EXPECT_EQ(named.recoverySuggestion(),
            "Bring the window you want to capture to the front and try the capture shortcut again.");
  EXPECT_EQ(Error(Error::NoSubstantialWindow{9, {}}).errorDescription(),
            "No visible captureable window was found for PID 9.");
  EXPECT_EQ(Error(Error::FrozenWindowUnavailable{7, 9, {}}).errorDescription(),
            "The frozen window 7 for PID 9 is no longer available to ScreenCaptureKit.");
}

TEST(ScreenshotCaptureDeadlines, stayInTheirRange) {
  const WindowScreenshotCaptureDeadlines clamped(0.01, 90);
  EXPECT_EQ(clamped.shareableContent(), 0.1);
  EXPECT_EQ(clamped.screenshot(), 60);
  const WindowScreenshotCaptureDeadlines odd(std::numeric_limits<double>::infinity(),
                                             std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(odd.shareableContent(), 4);
  EXPECT_EQ(odd.screenshot(), 8);
}

}  // namespace
}  // namespace quillo::test
