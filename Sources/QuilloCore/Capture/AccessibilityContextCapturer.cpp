#include "QuilloCore/Capture/AccessibilityContextCapturer.h"

#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureRequest.h"

namespace quillo {

AccessibilityContextCapturer::AccessibilityContextCapturer(AccessibilityInterface& interface,
                                                           MonotonicClock& monotonicClock, WallClock& wallClock,
                                                           const AccessibilityCaptureConfiguration& configuration,
                                                           std::string queueLabel)
    : interface_(interface),
      monotonicClock_(monotonicClock),
      wallClock_(wallClock),
      configuration_(configuration.clamped()),
      queue_(std::move(queueLabel)) {}

Task<AccessibilitySnapshot> AccessibilityContextCapturer::capture(WindowCaptureTarget target) {
  // The end of this object waits for the queue, so that an abandoned reading may use it.
  auto walk = [this, target = std::move(target)](const SharedAccessibilityCaptureControl& control) {
    return captureSynchronously(target, control);
  };
  Task<AccessibilitySnapshot> running =
      runCancellableAccessibilityOperation(monotonicClock_, queue_, configuration_.captureTimeout, walk);
  co_return co_await std::move(running);
}

AccessibilitySnapshot AccessibilityContextCapturer::captureSynchronously(
    const WindowCaptureTarget& target, const SharedAccessibilityCaptureControl& control) {
  return captureAccessibilitySnapshot(interface_, wallClock_, configuration_, target, control);
}

}  // namespace quillo
