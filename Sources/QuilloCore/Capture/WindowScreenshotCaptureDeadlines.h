#pragma once

#include <algorithm>
#include <cmath>

namespace quillo {

/// How long the display may take, in seconds.
class WindowScreenshotCaptureDeadlines {
 public:
  static constexpr double defaultShareableContent = 4;
  static constexpr double defaultScreenshot = 8;

  /// Brought into 0.1 … 60; what is not finite becomes the default.
  explicit WindowScreenshotCaptureDeadlines(double shareableContent = defaultShareableContent,
                                            double screenshot = defaultScreenshot)
      : shareableContent_(clamped(shareableContent, defaultShareableContent)),
        screenshot_(clamped(screenshot, defaultScreenshot)) {}

  double shareableContent() const { return shareableContent_; }  ///< for listing the windows
  double screenshot() const { return screenshot_; }              ///< for one window's pixels

 private:
  static double clamped(double seconds, double fallback) {
    constexpr double shortest = 0.1;
    constexpr double longest = 60;
    return std::isfinite(seconds) ? std::clamp(seconds, shortest, longest) : fallback;
  }

  double shareableContent_;
  double screenshot_;
};

}  // namespace quillo
