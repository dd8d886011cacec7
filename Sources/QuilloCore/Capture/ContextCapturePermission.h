#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillo {

enum class ContextCapturePermission : std::uint8_t { screenRecording, accessibility };

/// "Screen Recording", "Accessibility".
std::string_view displayName(ContextCapturePermission permission);

/// What the user has granted.
struct ContextCapturePermissionState {
  bool screenRecordingGranted = false;
  bool accessibilityGranted = false;

  bool isReady() const { return screenRecordingGranted && accessibilityGranted; }

  /// Screen recording first.
  std::vector<ContextCapturePermission> missingPermissions() const;

  friend bool operator==(const ContextCapturePermissionState&, const ContextCapturePermissionState&) = default;
};

}  // namespace quillo
