#pragma once

#include <optional>

#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// Where a toolkit's coordinates lie on the screen. Most toolkits give screen coordinates; one counts from the visible
/// edge of its window and does not know where that is.
struct AtspiWindowPlacement {
  ArtifactPoint origin;               ///< added to every coordinate
  std::optional<ArtifactRect> frame;  ///< of the window itself, instead of what it says
};

/// Puts a window that only knows its size on the frozen window: they are the same when the former fits into the latter
/// but for a border, of at most some sixty points, that the window draws around itself.
std::optional<AtspiWindowPlacement> placeWindow(const ArtifactRect& extents, const WindowCaptureTarget& target);

}  // namespace quillo
