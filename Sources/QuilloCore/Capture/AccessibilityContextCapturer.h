#pragma once

#include <memory>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

/// Reads the accessibility tree of frozen windows, within the limits of its configuration.
class AccessibilityContextCapturer {
 public:
  /// The interface and the clock outlive the capturer. The configuration is clamped.
  AccessibilityContextCapturer(AccessibilityInterface& interface, WallClock& wallClock,
                               const AccessibilityCaptureConfiguration& configuration = {});

  const AccessibilityCaptureConfiguration& configuration() const { return configuration_; }

  bool isAccessGranted(AccessibilityTrustPrompt prompt) { return interface_.isProcessTrusted(prompt); }

  /// Reads the window on the calling thread; one reading at a time. What could not be read, and what the limits cut,
  /// stands in the snapshot. Throws AccessibilityCaptureError, or OperationCancelled when the control was cancelled.
  AccessibilitySnapshot captureSynchronously(const WindowCaptureTarget& target,
                                             const std::shared_ptr<const AccessibilityCaptureControl>& control);

 private:
  AccessibilityInterface& interface_;
  WallClock& wallClock_;
  AccessibilityCaptureConfiguration configuration_;
};

}  // namespace quillo
