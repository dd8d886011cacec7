#pragma once

#include <string>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

/// Reads the accessibility tree of frozen windows, one after the other, on a queue of its own. Its end waits for the
/// reading that still runs.
class AccessibilityContextCapturer {
 public:
  /// The references outlive the capturer. The configuration is clamped.
  AccessibilityContextCapturer(AccessibilityInterface& interface, MonotonicClock& monotonicClock, WallClock& wallClock,
                               const AccessibilityCaptureConfiguration& configuration = {},
                               std::string queueLabel = "org.quillo.Quillo.accessibility-capture");

  const AccessibilityCaptureConfiguration& configuration() const { return configuration_; }

  bool isAccessGranted(AccessibilityTrustPrompt prompt) { return interface_.isProcessTrusted(prompt); }

  /// The window's snapshot. The caller is released at the capture time-out, and at once when it is cancelled, whatever
  /// call the reading is stuck in. Throws AccessibilityCaptureError or OperationCancelled.
  Task<AccessibilitySnapshot> capture(WindowCaptureTarget target);

  /// What the queue runs, on the calling thread; one reading at a time.
  AccessibilitySnapshot captureSynchronously(const WindowCaptureTarget& target,
                                             const SharedAccessibilityCaptureControl& control);

 private:
  AccessibilityInterface& interface_;
  MonotonicClock& monotonicClock_;
  WallClock& wallClock_;
  AccessibilityCaptureConfiguration configuration_;
  SerialQueue queue_;
};

}  // namespace quillo
