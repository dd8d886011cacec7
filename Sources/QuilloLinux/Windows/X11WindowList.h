#pragma once

#include <vector>

#include "QuilloCore/Capture/WindowListProviding.h"

namespace quillo {

/// The window manager's list of windows. Connects anew for each reading, so that a display that went away and came back
/// is no trouble.
class X11WindowList final : public WindowListProviding {
 public:
  std::vector<WindowListEntry> onScreenFrontToBack() override;
};

}  // namespace quillo
