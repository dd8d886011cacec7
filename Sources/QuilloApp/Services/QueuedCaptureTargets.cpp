#include "QuilloApp/Services/QueuedCaptureTargets.h"

namespace quillo {

QueuedCaptureTargets::QueuedCaptureTargets(const ApplicationPlatform& platform)
    : windowImages_(platform.windowImages),
      hintReader_(platform.accessibility),
      resolver_(platform.windowList, platform.windowOwners, hintReader_, platform.store.clock,
                platform.ownApplication) {}

Task<FrozenContextCaptureTarget> QueuedCaptureTargets::freezeCaptureTarget() {
  return queue_.run([this] {
    FrozenContextCaptureTarget target = resolver_.resolve();
    windowImages_->prepare(target.windowID);
    return target;
  });
}

}  // namespace quillo
