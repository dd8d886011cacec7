#include "QuilloApp/Services/QueuedCapturePermissions.h"

namespace quillo {

ContextCapturePermissionState QueuedCapturePermissions::read() const {
  return {.screenRecordingGranted = windowImages_->isAllowed(),
          .accessibilityGranted = accessibility_.isProcessTrusted(AccessibilityTrustPrompt::silent)};
}

Task<ContextCapturePermissionState> QueuedCapturePermissions::state() {
  return queue_.run([this] { return read(); });
}

Task<bool> QueuedCapturePermissions::request(ContextCapturePermission permission) {
  return queue_.run([this, permission] {
    return permission == ContextCapturePermission::accessibility
               ? accessibility_.isProcessTrusted(AccessibilityTrustPrompt::askUser)
               : windowImages_->isAllowed();
  });
}

}  // namespace quillo
