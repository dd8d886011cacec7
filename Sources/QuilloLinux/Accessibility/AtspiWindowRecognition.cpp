#include "QuilloLinux/Accessibility/AtspiWindowRecognition.h"

#include <algorithm>
#include <string>
#include <vector>

#include "QuilloCore/Capture/WindowTitle.h"

namespace quillo {

std::optional<std::size_t> recognizeByTitle(std::span<const AccessibilityWindowCandidate> windows,
                                            const WindowCaptureTarget& target) {
  const std::string frozenTitle = WindowTitle::normalized(target.windowTitle.value_or(""));
  std::size_t inPlaceCount = 0;
  std::vector<std::size_t> titled;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    const auto standsThere = [&](const ArtifactRect& frame) {
      return windows[i].frame && frame.agrees(*windows[i].frame, AccessibilityWindowMatcher::frameTolerance);
    };
    if (!standsThere(target.windowFrame) && std::ranges::none_of(target.equivalentFrames, standsThere)) continue;
    ++inPlaceCount;
    if (WindowTitle::normalized(windows[i].title.value_or("")) == frozenTitle) titled.push_back(i);
  }
  if (inPlaceCount < 2 || frozenTitle.empty() || titled.size() != 1) return std::nullopt;
  return titled.front();
}

}  // namespace quillo
