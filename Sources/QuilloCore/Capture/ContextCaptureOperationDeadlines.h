#pragma once

#include <algorithm>
#include <cmath>

namespace quillo {

/// How long each half of a capture may take, in seconds. Finite values are clamped into [0.1, 120]; others become the
/// defaults.
struct ContextCaptureOperationDeadlines {
  static constexpr double defaultScreenshot = 14;
  static constexpr double defaultAccessibility = 18;

  ContextCaptureOperationDeadlines() = default;
  ContextCaptureOperationDeadlines(double screenshotSeconds, double accessibilitySeconds)
      : screenshot(bounded(screenshotSeconds, defaultScreenshot)),
        accessibility(bounded(accessibilitySeconds, defaultAccessibility)) {}

  double screenshot = defaultScreenshot;
  double accessibility = defaultAccessibility;

  friend bool operator==(const ContextCaptureOperationDeadlines&, const ContextCaptureOperationDeadlines&) = default;

 private:
  static double bounded(double seconds, double fallback) {
    return std::isfinite(seconds) ? std::clamp(seconds, 0.1, 120.0) : fallback;
  }
};

}  // namespace quillo
