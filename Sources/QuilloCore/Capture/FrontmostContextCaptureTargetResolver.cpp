#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Capture/FrontmostWindowSelector.h"
#include "QuilloCore/Capture/UnknownWindowError.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

namespace quillo {

FrontmostContextCaptureTargetResolver::FrontmostContextCaptureTargetResolver(
    WindowListProviding& windowList, RunningApplicationsProviding& applications,
    FocusedAccessibilityWindowHintReader& hintReader, WallClock& wallClock, ExcludedApplication excluded)
    : windowList_(windowList),
      applications_(applications),
      hintReader_(hintReader),
      wallClock_(wallClock),
      excluded_(std::move(excluded)) {}

bool FrontmostContextCaptureTargetResolver::isEligible(const RunningApplication& application) const {
  const bool isExcludedBundle =
      application.bundleIdentifier && application.bundleIdentifier == excluded_.bundleIdentifier;
  return application.processIdentifier >= 1 && application.processIdentifier != excluded_.processIdentifier &&
         application.mayBeCaptured && !isExcludedBundle;
}

FrozenContextCaptureTarget FrontmostContextCaptureTargetResolver::resolve() {
  std::vector<WindowListEntry> windows;
  try {
    windows = windowList_.onScreenFrontToBack();
  } catch (const WindowScreenshotCaptureError&) {
    throw ContextCaptureServiceError(ContextCaptureServiceError::NoFrontmostNonQuilloApplication{});
  }
  if (const auto frontmost = applications_.frontmostApplication(); frontmost && isEligible(*frontmost)) {
    const auto hint = hintReader_.read(frontmost->processIdentifier);
    const auto window = FrontmostWindowSelector::selectCaptureableWindow(windows, frontmost->processIdentifier, hint);
    if (window) return freeze(*window, *frontmost, wallClock_.now());
  }
  for (const WindowListEntry& window : windows) {
    if (!FrontmostWindowSelector::isFreezable(window)) continue;
    const auto application = applications_.application(window.processIdentifier);
    if (application && isEligible(*application)) return freeze(window, *application, wallClock_.now());
  }
  throw ContextCaptureServiceError(ContextCaptureServiceError::NoFrontmostNonQuilloApplication{});
}

FrozenContextCaptureTarget FrontmostContextCaptureTargetResolver::resolveWindow(std::uint32_t windowID) {
  const std::vector<WindowListEntry> windows = windowList_.onScreenFrontToBack();
  const auto found = std::ranges::find(windows, windowID, &WindowListEntry::windowID);
  if (found == windows.end()) throw UnknownWindowError(windowID);
  RunningApplication unnamed;
  unnamed.processIdentifier = found->processIdentifier;
  return freeze(*found, applications_.application(found->processIdentifier).value_or(unnamed), wallClock_.now());
}

}  // namespace quillo
