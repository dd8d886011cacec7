#include "QuilloCore/Capture/ContextCaptureService.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "Tests/Support/CaptureOfLetter.h"

namespace quillo::test {
namespace {

using Error = ContextCaptureServiceError;

/// Never ends by itself; notes when it was cancelled.
template <class T>
Task<T> runForEver(MonotonicClock& clock, std::shared_ptr<std::atomic<bool>> wasCancelled) {
  try {
    Task<> pause = sleepFor(clock, 3600);
    co_await std::move(pause);
  } catch (const OperationCancelled&) {
    *wasCancelled = true;
    wasCancelled->notify_all();
    throw;
  }
  throw std::logic_error("an hour has passed");
}

template <class T>
Task<T> giveValue(T value) {
  co_return value;
}

template <class T, class Failure>
Task<T> failWith(Failure failure) {
  if (true) throw failure;
  co_return T{};
}

/// A service whose halves succeed unless a test says otherwise.
class ServiceUnderTest {
 public:
  ServiceUnderTest() {
    operations.targetProvider = [] { return frozenLetter(); };
    operations.permissionProvider = [this] { return permissions; };
    operations.screenshotOperation = [](WindowCaptureTarget target) {
      return giveValue(screenshotOfLetter(target.windowID, target.processIdentifier));
    };
    operations.accessibilityOperation = [](WindowCaptureTarget target) {
      AccessibilitySnapshot snapshot;
      snapshot.targetProcessIdentifier = target.processIdentifier;
      return giveValue(snapshot);
    };
  }

  ContextCaptureResult capture(const FrozenContextCaptureTarget& target = frozenLetter()) {
    ContextCaptureService service(operations, clock, queue.executor(), deadlines);
    return loop.run([&] { return service.capture(target); });
  }

  std::string errorOf(const FrozenContextCaptureTarget& target = frozenLetter()) {
    try {
      capture(target);
      return "no error";
    } catch (const Error& error) {
      return error.errorDescription();
    }
  }

  SystemMonotonicClock clock;
  BlockingLoop loop;
  SerialQueue queue{"halves"};
  ContextCapturePermissionState permissions{.screenRecordingGranted = true, .accessibilityGranted = true};
  ContextCaptureOperations operations;
  ContextCaptureOperationDeadlines deadlines;
  std::shared_ptr<std::atomic<bool>> wasCancelled = std::make_shared<std::atomic<bool>>(false);
};

TEST(ContextCaptureService, joinsBothHalvesOfTheFrozenWindow) {
  ServiceUnderTest service;
  const ContextCaptureResult result = service.capture();
  EXPECT_EQ(result.target, frozenLetter());
  EXPECT_EQ(result.source, (ArtifactSource{"Editor", std::nullopt, "Letter", letterFrame}));
  EXPECT_EQ(result.screenshot, screenshotOfLetter());
  EXPECT_EQ(result.accessibilitySnapshot.targetProcessIdentifier, 400);
  EXPECT_TRUE(result.accessibilitySnapshot.warnings.empty());
}

TEST(ContextCaptureService, refusesBeforeAnythingIsRead) {
  ServiceUnderTest service;
  service.operations.screenshotOperation = [](WindowCaptureTarget /*target*/) {
    return failWith<WindowScreenshotCapture>(std::logic_error("read"));
  };
  EXPECT_EQ(service.errorOf(frozenLetter(11, 0)), "The frozen capture target has an invalid process identifier (0).");
  EXPECT_EQ(service.errorOf(frozenLetter(0, 400)), "The frozen capture target has an invalid window identifier (0).");
  service.permissions.screenRecordingGranted = false;
  EXPECT_EQ(service.errorOf(), "Quillo needs Screen Recording permission before capturing.");
  service.permissions.accessibilityGranted = false;
  EXPECT_EQ(service.errorOf(), "Quillo needs Screen Recording and Accessibility permission before capturing.");
  EXPECT_EQ(Error(Error::PermissionsRequired{service.permissions}).recoverySuggestion(),
            "Enable Quillo in Screen & System Audio Recording and Accessibility under System Settings > Privacy & "
            "Security, then relaunch Quillo.");
}

TEST(ContextCaptureService, theFirstFailureEndsTheOtherHalf) {
  ServiceUnderTest service;
  service.operations.accessibilityOperation = [&](WindowCaptureTarget /*target*/) {
    return runForEver<AccessibilitySnapshot>(service.clock, service.wasCancelled);
  };
  service.operations.screenshotOperation = [](WindowCaptureTarget /*target*/) {
    return giveValue(screenshotOfLetter(12, 400));
  };
  EXPECT_EQ(service.errorOf(), "Window capture returned window 12 from PID 400, not frozen window 11 from PID 400.");
  service.operations.screenshotOperation = [](WindowCaptureTarget /*target*/) {
    return failWith<WindowScreenshotCapture>(
        WindowScreenshotCaptureError(WindowScreenshotCaptureError::ScreenshotReturnedNoImage{11}));
  };
  EXPECT_EQ(service.errorOf(), "ScreenCaptureKit returned no image for window 11.");
  service.operations.screenshotOperation = [](WindowCaptureTarget /*target*/) {
    return failWith<WindowScreenshotCapture>(std::runtime_error("out of paper"));
  };
  EXPECT_EQ(service.errorOf(), "Window capture failed: out of paper");
  service.wasCancelled->wait(false);  // it is told on the queue, after the caller
}

TEST(ContextCaptureService, aHalfThatTakesTooLongFailsTheWhole) {
  ServiceUnderTest service;
  service.deadlines = {14, 0.1};
  service.operations.accessibilityOperation = [&](WindowCaptureTarget /*target*/) {
    return runForEver<AccessibilitySnapshot>(service.clock, service.wasCancelled);
  };
  EXPECT_EQ(service.errorOf(), "Accessibility capture exceeded its 0.1-second safety deadline.");
  EXPECT_EQ(ContextCaptureOperationDeadlines(0, 500).screenshot, 0.1);
  EXPECT_EQ(ContextCaptureOperationDeadlines(0, 500).accessibility, 120);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(ContextCaptureOperationDeadlines(infinity, std::numeric_limits<double>::quiet_NaN()),
            ContextCaptureOperationDeadlines());
}

TEST(ContextCaptureService, saysWhenTheWindowChangedMeanwhile) {
  ServiceUnderTest service;
  service.operations.screenshotOperation = [](WindowCaptureTarget /*target*/) {
    WindowScreenshotCapture capture = screenshotOfLetter();
    capture.window.title = "Another letter";
    capture.window.frame.width += 10;
    return giveValue(capture);
  };
  EXPECT_EQ(service.capture().accessibilitySnapshot.warnings.size(), 2U);
}

TEST(ContextCaptureService, saysWhenThePictureIsOldByTheEnd) {
  BitmapImage picture{.width = 200, .height = 200, .pixels = std::vector<std::uint8_t>(200 * 200 * 4, 255)};
  ServiceUnderTest service;
  service.operations.screenshotOperation = [&](WindowCaptureTarget /*target*/) {
    WindowScreenshotCapture capture = screenshotOfLetter();
    capture.fingerprint = fingerprintOf(picture);
    return giveValue(capture);
  };
  const auto warningsAfter = [&](const PictureFingerprint& second) {
    service.operations.secondLookOperation = [&](WindowCaptureTarget /*target*/) { return giveValue(second); };
    return service.capture().accessibilitySnapshot.warnings;
  };
  using Warnings = std::vector<std::string>;
  const Warnings changed = {
      "The window's content changed while it was captured; the screenshot and the text may be of different moments."};
  const auto paint = [&](std::size_t left, std::size_t top, std::size_t width, std::size_t height) {
    BitmapImage painted = picture;
    for (std::size_t y = top; y < top + height; ++y)
      for (std::size_t x = left; x < left + width; ++x) painted.pixels[y * painted.bytesPerRow() + 4 * x] = 0;
    return fingerprintOf(painted);
  };
  EXPECT_EQ(warningsAfter(fingerprintOf(picture)), Warnings{});
  EXPECT_EQ(warningsAfter(paint(100, 100, 1, 12)), Warnings{}) << "a caret";
  EXPECT_EQ(warningsAfter(paint(3, 190, 100, 10)), changed) << "a line of text in the last row";
  picture.width = 100;
  picture.height = 400;
  EXPECT_EQ(warningsAfter(paint(0, 0, 0, 0)), Warnings{});
  EXPECT_EQ(warningsAfter(fingerprintOf({.width = 1, .height = 1, .pixels = {0, 0, 0, 0}})), changed);

  service.operations.secondLookOperation = [](WindowCaptureTarget /*target*/) {
    return failWith<PictureFingerprint>(std::runtime_error("closed"));
  };
  EXPECT_EQ(service.capture().accessibilitySnapshot.warnings, Warnings{});
}

}  // namespace
}  // namespace quillo::test
