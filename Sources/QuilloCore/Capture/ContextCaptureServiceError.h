#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <variant>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

namespace quillo {

/// Why a capture gave no result.
class ContextCaptureServiceError : public std::exception {
 public:
  struct InvalidFrozenTarget {
    std::int32_t processIdentifier = 0;
    friend bool operator==(const InvalidFrozenTarget&, const InvalidFrozenTarget&) = default;
  };
  struct InvalidFrozenWindow {
    std::uint32_t windowID = 0;
    friend bool operator==(const InvalidFrozenWindow&, const InvalidFrozenWindow&) = default;
  };
  struct PermissionsRequired {
    ContextCapturePermissionState state;
    friend bool operator==(const PermissionsRequired&, const PermissionsRequired&) = default;
  };
  struct Screenshot {
    WindowScreenshotCaptureError error;
    friend bool operator==(const Screenshot&, const Screenshot&) = default;
  };
  struct Accessibility {
    AccessibilityCaptureError error;
    friend bool operator==(const Accessibility&, const Accessibility&) = default;
  };
  struct ScreenshotWindowMismatch {
    std::uint32_t expectedWindowID = 0;
    std::uint32_t actualWindowID = 0;
    std::int32_t expectedProcessIdentifier = 0;
    std::int32_t actualProcessIdentifier = 0;
    friend bool operator==(const ScreenshotWindowMismatch&, const ScreenshotWindowMismatch&) = default;
  };
  struct ScreenshotFailure {
    std::string reason;
    friend bool operator==(const ScreenshotFailure&, const ScreenshotFailure&) = default;
  };
  struct AccessibilityFailure {
    std::string reason;
    friend bool operator==(const AccessibilityFailure&, const AccessibilityFailure&) = default;
  };
  struct ScreenshotTimedOut {
    double seconds = 0;
    friend bool operator==(const ScreenshotTimedOut&, const ScreenshotTimedOut&) = default;
  };
  struct AccessibilityTimedOut {
    double seconds = 0;
    friend bool operator==(const AccessibilityTimedOut&, const AccessibilityTimedOut&) = default;
  };
  struct NoFrontmostNonQuilloApplication {
    friend bool operator==(const NoFrontmostNonQuilloApplication&, const NoFrontmostNonQuilloApplication&) = default;
  };
  using Case = std::variant<InvalidFrozenTarget, InvalidFrozenWindow, PermissionsRequired, Screenshot, Accessibility,
                            ScreenshotWindowMismatch, ScreenshotFailure, AccessibilityFailure, ScreenshotTimedOut,
                            AccessibilityTimedOut, NoFrontmostNonQuilloApplication>;

  // Not explicit: an error is thrown by naming its case.
  ContextCaptureServiceError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  std::optional<std::string> recoverySuggestion() const;
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const ContextCaptureServiceError& a, const ContextCaptureServiceError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
