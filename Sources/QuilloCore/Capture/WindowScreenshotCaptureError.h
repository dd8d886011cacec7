#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <variant>

namespace quillo {

/// Why the frozen window's pixels could not be had.
class WindowScreenshotCaptureError : public std::exception {
 public:
  struct InvalidProcessIdentifier {
    std::int32_t processIdentifier = 0;
    friend bool operator==(const InvalidProcessIdentifier&, const InvalidProcessIdentifier&) = default;
  };
  struct InvalidWindowIdentifier {
    std::uint32_t windowID = 0;
    friend bool operator==(const InvalidWindowIdentifier&, const InvalidWindowIdentifier&) = default;
  };
  struct ShareableContentUnavailable {
    std::string reason;
    friend bool operator==(const ShareableContentUnavailable&, const ShareableContentUnavailable&) = default;
  };
  struct ShareableContentTimedOut {
    double seconds = 0;
    friend bool operator==(const ShareableContentTimedOut&, const ShareableContentTimedOut&) = default;
  };
  struct NoSubstantialWindow {
    std::int32_t processIdentifier = 0;
    std::optional<std::string> applicationName;
    friend bool operator==(const NoSubstantialWindow&, const NoSubstantialWindow&) = default;
  };
  struct FrozenWindowUnavailable {
    std::uint32_t windowID = 0;
    std::int32_t processIdentifier = 0;
    std::optional<std::string> applicationName;
    friend bool operator==(const FrozenWindowUnavailable&, const FrozenWindowUnavailable&) = default;
  };
  struct ScreenshotFailed {
    std::uint32_t windowID = 0;
    std::string reason;
    friend bool operator==(const ScreenshotFailed&, const ScreenshotFailed&) = default;
  };
  struct ScreenshotTimedOut {
    std::uint32_t windowID = 0;
    double seconds = 0;
    friend bool operator==(const ScreenshotTimedOut&, const ScreenshotTimedOut&) = default;
  };
  struct ScreenshotReturnedNoImage {
    std::uint32_t windowID = 0;
    friend bool operator==(const ScreenshotReturnedNoImage&, const ScreenshotReturnedNoImage&) = default;
  };
  struct ScreenRecordingPermissionRequired {
    friend bool operator==(const ScreenRecordingPermissionRequired&,
                           const ScreenRecordingPermissionRequired&) = default;
  };
  struct WindowListUnavailable {
    friend bool operator==(const WindowListUnavailable&, const WindowListUnavailable&) = default;
  };
  struct PngDestinationCreationFailed {
    friend bool operator==(const PngDestinationCreationFailed&, const PngDestinationCreationFailed&) = default;
  };
  struct PngEncodingFailed {
    friend bool operator==(const PngEncodingFailed&, const PngEncodingFailed&) = default;
  };
  using Case = std::variant<InvalidProcessIdentifier, InvalidWindowIdentifier, ShareableContentUnavailable,
                            ShareableContentTimedOut, NoSubstantialWindow, FrozenWindowUnavailable, ScreenshotFailed,
                            ScreenshotTimedOut, ScreenshotReturnedNoImage, ScreenRecordingPermissionRequired,
                            WindowListUnavailable, PngDestinationCreationFailed, PngEncodingFailed>;

  // Not explicit: an error is thrown by naming its case.
  WindowScreenshotCaptureError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  std::optional<std::string> recoverySuggestion() const;
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const WindowScreenshotCaptureError& a, const WindowScreenshotCaptureError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
