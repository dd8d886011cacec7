#pragma once

#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloApp/Services/ApplicationPlatform.h"
#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"
#include "QuilloCore/Concurrency/SerialQueue.h"

namespace quillo {

/// Freezes the window in front on a queue of its own, because display and applications take their time to answer. Has
/// the window's pixels kept from then on.
class QueuedCaptureTargets final : public CaptureTargetFreezing {
 public:
  explicit QueuedCaptureTargets(const ApplicationPlatform& platform);

  Task<FrozenContextCaptureTarget> freezeCaptureTarget() override;

 private:
  std::shared_ptr<WindowImageCapturing> windowImages_;
  FocusedAccessibilityWindowHintReader hintReader_;
  FrontmostContextCaptureTargetResolver resolver_;
  SerialQueue queue_{"org.quillo.Quillo.capture-target"};
};

}  // namespace quillo
