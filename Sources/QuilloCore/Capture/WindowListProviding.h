#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

enum class WindowSharingState : std::uint8_t { none, readOnly, readWrite };

/// One window of the window server's list.
struct WindowListEntry {
  std::uint32_t windowID = 0;
  std::int32_t processIdentifier = 0;
  std::int64_t layer = 0;  ///< 0 for ordinary application windows
  ArtifactRect bounds;     ///< the client rectangle in screen points
  double alpha = 1;
  bool isOnScreen = false;
  WindowSharingState sharingState = WindowSharingState::readOnly;
  std::optional<std::string> title;  ///< one line

  /// The same window with its manager's decoration, and without a shadow of its own; empty when neither differs.
  std::vector<ArtifactRect> equivalentBounds;

  friend bool operator==(const WindowListEntry&, const WindowListEntry&) = default;
};

/// The window server's list of windows. May be asked by several threads.
class WindowListProviding {
 public:
  virtual ~WindowListProviding() = default;

  /// The on-screen windows, front to back, without the desktop's own. An empty list means that there are none.
  /// Throws WindowScreenshotCaptureError (windowListUnavailable) when the server cannot be asked.
  virtual std::vector<WindowListEntry> onScreenFrontToBack() = 0;
};

}  // namespace quillo
