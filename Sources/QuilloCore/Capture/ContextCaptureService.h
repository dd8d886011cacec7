#pragma once

#include <functional>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/ArtifactSource.h"
#include "QuilloCore/Capture/ContextCaptureOperationDeadlines.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Capture/FrozenContextCaptureTarget.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Capture/WindowScreenshotCapture.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"

namespace quillo {

/// Both halves of one capture, and what was captured.
struct ContextCaptureResult {
  FrozenContextCaptureTarget target;
  ArtifactSource source;  ///< as the display knew the window when its pixels were taken
  WindowScreenshotCapture screenshot;
  AccessibilitySnapshot accessibilitySnapshot;

  friend bool operator==(const ContextCaptureResult&, const ContextCaptureResult&) = default;
};

/// What a capture is made of; each is replaced in tests.
struct ContextCaptureOperations {
  std::function<FrozenContextCaptureTarget()> targetProvider;
  std::function<ContextCapturePermissionState()> permissionProvider;
  std::function<Task<WindowScreenshotCapture>(WindowCaptureTarget)> screenshotOperation;
  std::function<Task<AccessibilitySnapshot>(WindowCaptureTarget)> accessibilityOperation;
  /// What the window looks like when both halves have been read; where it is missing or fails, nothing is compared.
  std::function<Task<PictureFingerprint>(WindowCaptureTarget)> secondLookOperation;
};

using ScreenshotObserver = std::function<void(const WindowScreenshotCapture&)>;

/// Takes a frozen window's pixels and its accessibility tree side by side, each under its deadline. Both or an error:
/// the first failure ends the other half.
class ContextCaptureService {
 public:
  /// The halves begin on the executor and do their long work on queues of their own. The clock outlives every capture;
  /// a half that was given up may outlive the service, so the operations share what they use.
  ContextCaptureService(ContextCaptureOperations operations, MonotonicClock& clock, TaskExecutor executor,
                        ContextCaptureOperationDeadlines deadlines = {});

  /// Freezes the window to capture and captures it. Throws as `capture` and as the target provider does.
  Task<ContextCaptureResult> captureFrontmostApplication();

  /// Throws ContextCaptureServiceError or OperationCancelled. `onScreenshot` is called on the service's executor as
  /// soon as the pixels are there, while the tree may still be read; what it tells must not throw.
  Task<ContextCaptureResult> capture(FrozenContextCaptureTarget target, ScreenshotObserver onScreenshot = {});

 private:
  Task<bool> hasContentChanged(WindowCaptureTarget target, PictureFingerprint before);

  ContextCaptureOperations operations_;
  MonotonicClock& clock_;
  TaskExecutor executor_;
  ContextCaptureOperationDeadlines deadlines_;
};

}  // namespace quillo
