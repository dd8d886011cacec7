#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// The frozen window that a capture reads.
struct WindowCaptureTarget {
  std::int32_t processIdentifier = 0;
  std::optional<std::string> applicationName;
  std::optional<std::string> bundleIdentifier;
  std::uint32_t windowID = 0;  ///< the window server's number
  ArtifactRect windowFrame;
  std::optional<std::string> windowTitle;

  /// Other rectangles by which an application may know the same window: with the window manager's decoration, or
  /// without the shadow that the application draws itself. `windowFrame` is not repeated here.
  std::vector<ArtifactRect> equivalentFrames;

  friend bool operator==(const WindowCaptureTarget&, const WindowCaptureTarget&) = default;
};

}  // namespace quillo
