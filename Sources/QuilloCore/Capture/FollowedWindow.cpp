#include "QuilloCore/Capture/FollowedWindow.h"

#include <algorithm>
#include <vector>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

namespace quillo {

WindowCaptureTarget followWindow(const WindowCaptureTarget& frozen, WindowListProviding& windowList) {
  std::vector<WindowListEntry> windows;
  try {
    windows = windowList.onScreenFrontToBack();
  } catch (const WindowScreenshotCaptureError&) {
    return frozen;
  }
  const auto found = std::ranges::find_if(windows, [&](const WindowListEntry& window) {
    return window.windowID == frozen.windowID && window.processIdentifier == frozen.processIdentifier;
  });
  if (found == windows.end() || found->bounds == frozen.windowFrame) return frozen;
  WindowCaptureTarget followed = frozen;
  followed.windowFrame = found->bounds;
  followed.equivalentFrames = found->equivalentBounds;
  followed.equivalentFrames.push_back(frozen.windowFrame);
  followed.equivalentFrames.insert(followed.equivalentFrames.end(), frozen.equivalentFrames.begin(),
                                   frozen.equivalentFrames.end());
  return followed;
}

}  // namespace quillo
