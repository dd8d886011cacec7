#pragma once

#include <memory>

#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloApp/Services/ApplicationPlatform.h"
#include "QuilloCore/Concurrency/SerialQueue.h"

namespace quillo {

/// Asks display and accessibility service on a queue of its own. This platform's display grants or refuses by itself,
/// so that asking for the pixels is looking whether they can be had.
class QueuedCapturePermissions final : public CapturePermissions {
 public:
  explicit QueuedCapturePermissions(const ApplicationPlatform& platform)
      : accessibility_(platform.accessibility), windowImages_(platform.windowImages) {}

  Task<ContextCapturePermissionState> state() override;
  Task<bool> request(ContextCapturePermission permission) override;

  /// On the calling thread, from any.
  ContextCapturePermissionState read() const;

 private:
  AccessibilityInterface& accessibility_;
  std::shared_ptr<WindowImageCapturing> windowImages_;
  SerialQueue queue_{"org.quillo.Quillo.permissions"};
};

}  // namespace quillo
