#include "QuilloLinux/Accessibility/AtspiWindowPlacement.h"

#include <cmath>

namespace quillo {

std::optional<AtspiWindowPlacement> placeWindow(const ArtifactRect& extents, const WindowCaptureTarget& target) {
  constexpr double widestBorder = 64;
  constexpr double tolerance = 2;
  const auto originIn = [&](const ArtifactRect& frame) -> std::optional<ArtifactPoint> {
    const double horizontal = (frame.width - extents.width) / 2;
    const double vertical = (frame.height - extents.height) / 2;
    const bool fits =
        horizontal >= -tolerance && horizontal <= widestBorder && vertical >= -tolerance && vertical <= widestBorder;
    if (!fits) return std::nullopt;
    return ArtifactPoint{.x = frame.x + horizontal - extents.x, .y = frame.y + vertical - extents.y};
  };
  // What the window manager says of the shadow is better than the guess that the border is equal on all sides.
  for (const ArtifactRect& frame : target.equivalentFrames) {
    if (std::abs(frame.width - extents.width) > tolerance || std::abs(frame.height - extents.height) > tolerance) {
      continue;
    }
    return AtspiWindowPlacement{.origin = {.x = frame.x - extents.x, .y = frame.y - extents.y},
                                .frame = target.windowFrame};
  }
  const auto origin = originIn(target.windowFrame);
  if (!origin) return std::nullopt;
  return AtspiWindowPlacement{.origin = *origin, .frame = target.windowFrame};
}

}  // namespace quillo
