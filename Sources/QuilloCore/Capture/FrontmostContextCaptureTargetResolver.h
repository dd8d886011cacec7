#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrozenContextCaptureTarget.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

/// The application that is never captured: this one.
struct ExcludedApplication {
  std::int32_t processIdentifier = 0;
  std::optional<std::string> bundleIdentifier;
};

/// Finds and freezes the window to capture. Used on the main thread.
class FrontmostContextCaptureTargetResolver {
 public:
  /// The references outlive this.
  FrontmostContextCaptureTargetResolver(WindowListProviding& windowList, RunningApplicationsProviding& applications,
                                        FocusedAccessibilityWindowHintReader& hintReader, WallClock& wallClock,
                                        ExcludedApplication excluded);

  /// The focused window of the frontmost application, or, when that is not another application's, the frontmost window
  /// of one that may be captured. Throws ContextCaptureServiceError (noFrontmostNonQuilloApplication).
  FrozenContextCaptureTarget resolve();

  /// The window of that number, whatever stands before it and whoever owns it. Throws UnknownWindowError when no such
  /// window is on the screen, WindowScreenshotCaptureError (windowListUnavailable).
  FrozenContextCaptureTarget resolveWindow(std::uint32_t windowID);

 private:
  bool isEligible(const RunningApplication& application) const;

  WindowListProviding& windowList_;
  RunningApplicationsProviding& applications_;
  FocusedAccessibilityWindowHintReader& hintReader_;
  WallClock& wallClock_;
  ExcludedApplication excluded_;
};

}  // namespace quillo
