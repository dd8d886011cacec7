#pragma once

#include <cstdint>
#include <memory>

#include "QuilloCore/Capture/BitmapImage.h"
#include "QuilloLinux/Windows/UndrawnArea.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// A window that draws into pixels of its own for as long as this exists, and what it has drawn since.
class X11WindowPixels {
 public:
  /// Whether the display has what is needed.
  static bool isOffered(const X11Connection& connection);

  /// Null when the display cannot be asked. A window that is gone shows itself when it is read.
  static std::unique_ptr<X11WindowPixels> open(std::uint32_t windowID);

  std::uint32_t windowID() const { return windowID_; }

  /// The pixels as they are now, waiting up to a tenth of a second for what the program has still to draw. Throws
  /// std::runtime_error: the window is gone or not on the screen, or part of it was covered and stays black.
  BitmapImage read();

 private:
  X11WindowPixels(std::unique_ptr<X11Connection> connection, std::uint32_t windowID);

  void noteWhatWasDrawn();
  void awaitDrawing(std::int32_t width, std::int32_t height);

  std::unique_ptr<X11Connection> connection_;
  std::uint32_t windowID_;
  UndrawnArea undrawn_;
};

}  // namespace quillo
