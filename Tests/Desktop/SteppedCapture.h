#pragma once

#include <cstdint>
#include <memory>

#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo::test {

/// A capture of real windows whose steps a test takes one by one, so that something can happen between them.
class SteppedCapture {
 public:
  SteppedCapture();

  /// Throws what the resolver throws.
  FrozenContextCaptureTarget freeze(std::uint32_t windowID);

  /// Throws ContextCaptureServiceError.
  ContextCaptureResult capture(const FrozenContextCaptureTarget& target,
                               ContextCaptureOperationDeadlines deadlines = {});

  /// The picture alone, for windows that are on no accessibility bus. Throws WindowScreenshotCaptureError.
  WindowScreenshotCapture takePicture(const FrozenContextCaptureTarget& target);

 private:
  SystemWallClock wallClock_;
  SystemMonotonicClock clock_;
  AtspiAccessibilityInterface accessibility_;
  X11WindowList windowList_;
  X11RunningApplications applications_;
  std::shared_ptr<X11WindowImage> images_;
  BlockingLoop loop_;
  AccessibilityContextCapturer capturer_;
  SerialQueue screenshotQueue_{"screenshot"};
  SerialQueue accessibilityQueue_{"accessibility"};
  SerialQueue workers_{"capture"};
  FrontmostWindowScreenshotCapturer screenshots_;
};

}  // namespace quillo::test
