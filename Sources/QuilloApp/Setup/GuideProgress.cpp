#include "QuilloApp/Setup/GuideProgress.h"

#include <algorithm>

namespace quillo {

void GuideProgress::follow(const QuilloModelState& state) {
  const auto set = [this](GuideStep step, bool isDone) { isDone_.at(static_cast<std::size_t>(step)) = isDone; };
  const ContextCapturePermissionState& access = state.capturePermissionState;
  set(GuideStep::access, access.screenRecordingGranted && access.accessibilityGranted);
  set(GuideStep::shortcuts, !state.hotKeyRegistrationError);
  if (isDone(GuideStep::capture)) return;
  // Newest first; the library may still be loading what was there before.
  const auto captured = std::ranges::find_if(
      state.artifacts, [this](const StoredArtifact& artifact) { return artifact.manifest.createdAt >= beganAt_; });
  if (captured == state.artifacts.end()) return;
  capturedTitle_ = captured->manifest.title;
  set(GuideStep::capture, true);
}

bool GuideProgress::isEverythingDone() const {
  return std::ranges::all_of(steps, [this](GuideStep step) { return isDone(step); });
}

}  // namespace quillo
