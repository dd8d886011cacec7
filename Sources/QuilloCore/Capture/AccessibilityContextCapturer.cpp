#include "QuilloCore/Capture/AccessibilityContextCapturer.h"

#include <chrono>
#include <thread>
#include <utility>
#include <variant>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/AccessibilityCaptureRequest.h"
#include "QuilloCore/Capture/FollowedWindow.h"

namespace quillo {
namespace {

/// Reads the window where it stands. One that has been resized is looked for again, as its program may take a moment to
/// hear of it, or is being resized still.
AccessibilitySnapshot readWindow(AccessibilityInterface& interface, WindowListProviding& windowList,
                                 WallClock& wallClock, const AccessibilityCaptureConfiguration& configuration,
                                 const WindowCaptureTarget& target, const SharedAccessibilityCaptureControl& control) {
  constexpr int maximumAttemptCount = 5;
  constexpr std::chrono::milliseconds hearingTime{50};
  for (int attempt = 1;; ++attempt) {
    const WindowCaptureTarget followed = followWindow(target, windowList);
    try {
      return captureAccessibilitySnapshot(interface, wallClock, configuration, followed, control);
    } catch (const AccessibilityCaptureError& error) {
      const bool isUnrecognized =
          std::holds_alternative<AccessibilityCaptureError::TargetWindowUnavailable>(error.value());
      if (!isUnrecognized || followed == target || attempt == maximumAttemptCount) throw;
    }
    std::this_thread::sleep_for(hearingTime);
    control->checkpoint();
  }
}

}  // namespace

AccessibilityContextCapturer::AccessibilityContextCapturer(AccessibilityInterface& interface,
                                                           WindowListProviding& windowList, WallClock& wallClock,
                                                           const AccessibilityCaptureConfiguration& configuration)
    : interface_(interface), windowList_(windowList), wallClock_(wallClock), configuration_(configuration.clamped()) {}

Task<AccessibilitySnapshot> AccessibilityContextCapturer::capture(MonotonicClock& clock, SerialQueue& queue,
                                                                  WindowCaptureTarget target) {
  // An abandoned reading may outlive this capturer, so it refers only to what outlives the queue.
  auto walk = [&interface = interface_, &windowList = windowList_, &wallClock = wallClock_,
               configuration = configuration_,
               target = std::move(target)](const SharedAccessibilityCaptureControl& control) {
    return readWindow(interface, windowList, wallClock, configuration, target, control);
  };
  Task<AccessibilitySnapshot> running =
      runCancellableAccessibilityOperation(clock, queue, configuration_.captureTimeout, std::move(walk));
  co_return co_await std::move(running);
}

AccessibilitySnapshot AccessibilityContextCapturer::captureSynchronously(
    const WindowCaptureTarget& target, const SharedAccessibilityCaptureControl& control) {
  return readWindow(interface_, windowList_, wallClock_, configuration_, target, control);
}

}  // namespace quillo
