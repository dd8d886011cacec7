#pragma once

#include <cstdint>
#include <memory>

#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Capture/WindowImageCapturing.h"
#include "QuilloCore/Capture/WindowScreenshotCapture.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureDeadlines.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Takes the picture of the frozen window, and of no other window of its application.
class FrontmostWindowScreenshotCapturer {
 public:
  /// The display is called, and pictures are encoded, on the queue. The clock and the queue outlive every capture; an
  /// abandoned capture may outlive this capturer.
  FrontmostWindowScreenshotCapturer(std::shared_ptr<WindowImageCapturing> windows, MonotonicClock& clock,
                                    SerialQueue& queue,
                                    WindowScreenshotCaptureDeadlines deadlines = WindowScreenshotCaptureDeadlines());

  const WindowScreenshotCaptureDeadlines& deadlines() const { return deadlines_; }

  /// Not to be awaited on the queue. Throws WindowScreenshotCaptureError or OperationCancelled.
  Task<WindowScreenshotCapture> capture(WindowCaptureTarget target);

  /// What the window looks like now, to be compared with its picture. Not to be awaited on the queue; throws as
  /// `capture`.
  Task<PictureFingerprint> lookAgain(WindowCaptureTarget target);

 private:
  Task<BitmapImage> takeImage(std::uint32_t windowID);

  std::shared_ptr<WindowImageCapturing> windows_;
  MonotonicClock& clock_;
  SerialQueue& queue_;
  WindowScreenshotCaptureDeadlines deadlines_;
};

}  // namespace quillo
