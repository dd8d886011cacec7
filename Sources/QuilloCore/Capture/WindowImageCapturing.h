#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "QuilloCore/Capture/BitmapImage.h"
#include "QuilloCore/Capture/WindowScreenshotCapture.h"

namespace quillo {

/// The display's pictures of single windows. Calls may come from several threads and may block; failures are
/// std::exceptions whose text is a reason to show.
class WindowImageCapturing {
 public:
  virtual ~WindowImageCapturing() = default;

  /// Whether the display lets this process read windows. Asks the user nothing.
  virtual bool isAllowed() = 0;

  /// Has the window's pixels kept from now on, also where other windows cover it, until its picture is taken or another
  /// window is prepared. To be called when the window is frozen: a program needs a moment to draw what was covered.
  /// What fails here shows itself when the picture is taken.
  virtual void prepare(std::uint32_t windowID) = 0;

  /// The windows that are on the screen.
  virtual std::vector<CapturedWindowMetadata> capturableWindows() = 0;

  /// Exactly this window's pixels, as they are now; nothing when the display gives none.
  virtual std::optional<BitmapImage> image(std::uint32_t windowID) = 0;
};

}  // namespace quillo
