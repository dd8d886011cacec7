#include "QuilloCore/Capture/AccessibilityContextCapturer.h"

#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureRequest.h"

namespace quillo {

AccessibilityContextCapturer::AccessibilityContextCapturer(AccessibilityInterface& interface, WallClock& wallClock,
                                                           const AccessibilityCaptureConfiguration& configuration)
    : interface_(interface), wallClock_(wallClock), configuration_(configuration.clamped()) {}

Task<AccessibilitySnapshot> AccessibilityContextCapturer::capture(MonotonicClock& clock, SerialQueue& queue,
                                                                  WindowCaptureTarget target) {
  // An abandoned reading may outlive this capturer, so it refers only to what outlives the queue.
  auto walk = [&interface = interface_, &wallClock = wallClock_, configuration = configuration_,
               target = std::move(target)](const SharedAccessibilityCaptureControl& control) {
    return captureAccessibilitySnapshot(interface, wallClock, configuration, target, control);
  };
  Task<AccessibilitySnapshot> running =
      runCancellableAccessibilityOperation(clock, queue, configuration_.captureTimeout, std::move(walk));
  co_return co_await std::move(running);
}

AccessibilitySnapshot AccessibilityContextCapturer::captureSynchronously(
    const WindowCaptureTarget& target, const SharedAccessibilityCaptureControl& control) {
  return captureAccessibilitySnapshot(interface_, wallClock_, configuration_, target, control);
}

}  // namespace quillo
