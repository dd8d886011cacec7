#include "QuilloCore/Capture/ContextCapturePermission.h"

namespace quillo {

std::string_view displayName(ContextCapturePermission permission) {
  return permission == ContextCapturePermission::screenRecording ? "Screen Recording" : "Accessibility";
}

std::vector<ContextCapturePermission> ContextCapturePermissionState::missingPermissions() const {
  std::vector<ContextCapturePermission> missing;
  if (!screenRecordingGranted) missing.push_back(ContextCapturePermission::screenRecording);
  if (!accessibilityGranted) missing.push_back(ContextCapturePermission::accessibility);
  return missing;
}

}  // namespace quillo
