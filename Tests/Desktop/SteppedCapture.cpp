#include "SteppedCapture.h"

#include <utility>

#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"

namespace quillo::test {
namespace {

ApplicationIdentity nameless(const std::string& /*windowClass*/) {
  return {};
}

}  // namespace

SteppedCapture::SteppedCapture()
    : applications_(nameless),
      images_(std::make_shared<X11WindowImage>(nameless)),
      capturer_(accessibility_, windowList_, wallClock_),
      screenshots_(images_, clock_, screenshotQueue_) {}

FrozenContextCaptureTarget SteppedCapture::freeze(std::uint32_t windowID) {
  FocusedAccessibilityWindowHintReader hints(accessibility_);
  FrontmostContextCaptureTargetResolver resolver(windowList_, applications_, hints, wallClock_, {});
  FrozenContextCaptureTarget target = resolver.resolveWindow(windowID);
  images_->prepare(windowID);
  return target;
}

ContextCaptureResult SteppedCapture::capture(const FrozenContextCaptureTarget& target,
                                             ContextCaptureOperationDeadlines deadlines) {
  ContextCaptureOperations operations;
  operations.permissionProvider = [this] {
    return ContextCapturePermissionState{
        .screenRecordingGranted = images_->isAllowed(),
        .accessibilityGranted = capturer_.isAccessGranted(AccessibilityTrustPrompt::silent)};
  };
  operations.screenshotOperation = [this](WindowCaptureTarget window) {
    return screenshots_.capture(std::move(window));
  };
  operations.accessibilityOperation = [this](WindowCaptureTarget window) {
    return capturer_.capture(clock_, accessibilityQueue_, std::move(window));
  };
  operations.secondLookOperation = [this](WindowCaptureTarget window) {
    return screenshots_.lookAgain(std::move(window));
  };
  ContextCaptureService service(std::move(operations), clock_, workers_.executor(), deadlines);
  return loop_.run([&] { return service.capture(target); });
}

WindowScreenshotCapture SteppedCapture::takePicture(const FrozenContextCaptureTarget& target) {
  return loop_.run([&] { return screenshots_.capture(makeWindowCaptureTarget(target)); });
}

}  // namespace quillo::test
