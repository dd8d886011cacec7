#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

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

  /// The pixels as they are now, waiting up to half a second for what the program has still to draw. Throws
  /// std::runtime_error: the window is gone or not on the screen, or part of it was covered and is not drawn.
  BitmapImage read();

 private:
  X11WindowPixels(std::unique_ptr<X11Connection> connection, std::uint32_t windowID);

  using Clock = std::chrono::steady_clock;

  void noteWhatHappened();
  void noteSize(std::int32_t width, std::int32_t height);
  bool awaitDrawing(Clock::time_point deadline);
  BitmapImage readPixels();

  std::unique_ptr<X11Connection> connection_;
  std::uint32_t windowID_;
  std::uint8_t damageEvent_;
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  bool isShown_ = false;
  bool keepsItsCorner_ = false;  ///< what is drawn stays, at the upper left, when the window is resized
  UndrawnArea undrawn_;
  std::optional<PixelRect> kept_;  ///< by a resize; the display will report it as drawn although nobody draws
  bool isResized_ = false;         ///< and has perhaps not been laid out anew
  Clock::time_point lastEvent_;
};

}  // namespace quillo
