#include "QuilloCore/Capture/FrozenContextCaptureTarget.h"

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

FrozenContextCaptureTarget freeze(const WindowListEntry& window, const RunningApplication& application, Date now) {
  FrozenContextCaptureTarget target;
  target.processIdentifier = window.processIdentifier;
  target.applicationName = bringingToOneLine(application.localizedName.value_or(""));
  if (target.applicationName.empty()) target.applicationName = "Application";
  target.bundleIdentifier = application.bundleIdentifier;
  target.windowID = window.windowID;
  target.windowFrame = window.bounds;
  if (window.title) target.windowTitle = bringingToOneLine(*window.title);
  target.frozenAt = now;
  target.equivalentFrames = window.equivalentBounds;
  return target;
}

WindowCaptureTarget makeWindowCaptureTarget(const FrozenContextCaptureTarget& target) {
  return {.processIdentifier = target.processIdentifier,
          .applicationName = target.applicationName,
          .bundleIdentifier = target.bundleIdentifier,
          .windowID = target.windowID,
          .windowFrame = target.windowFrame,
          .windowTitle = target.windowTitle,
          .equivalentFrames = target.equivalentFrames};
}

}  // namespace quillo
