#pragma once

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Capture/WindowListProviding.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

/// Reads the accessibility tree of frozen windows, wherever they stand by then, within the limits of its configuration.
class AccessibilityContextCapturer {
 public:
  /// The references outlive every reading; the window list is asked on the thread that reads. The configuration is
  /// clamped.
  AccessibilityContextCapturer(AccessibilityInterface& interface, WindowListProviding& windowList, WallClock& wallClock,
                               const AccessibilityCaptureConfiguration& configuration = {});

  const AccessibilityCaptureConfiguration& configuration() const { return configuration_; }

  bool isAccessGranted(AccessibilityTrustPrompt prompt) { return interface_.isProcessTrusted(prompt); }

  /// The window's snapshot, read on the queue. The caller is released at the capture time-out, and at once when it is
  /// cancelled, whatever call the reading is stuck in; that reading still ends before the queue's next one begins.
  /// Throws AccessibilityCaptureError or OperationCancelled.
  Task<AccessibilitySnapshot> capture(MonotonicClock& clock, SerialQueue& queue, WindowCaptureTarget target);

  /// The same on the calling thread, until the control stops it.
  AccessibilitySnapshot captureSynchronously(const WindowCaptureTarget& target,
                                             const SharedAccessibilityCaptureControl& control);

 private:
  AccessibilityInterface& interface_;
  WindowListProviding& windowList_;
  WallClock& wallClock_;
  AccessibilityCaptureConfiguration configuration_;
};

}  // namespace quillo
