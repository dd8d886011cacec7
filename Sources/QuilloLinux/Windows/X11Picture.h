#pragma once

#include <cstdint>

#include "QuilloCore/Capture/BitmapImage.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// Reads a pixmap in the format of a visual, without a border of that many pixels, through shared memory where the
/// display shares it. Throws std::runtime_error for what cannot be read: a pixmap that is gone, a format other than 24
/// or 32 bits of depth in 32-bit pixels, a picture larger than any screen.
BitmapImage readPicture(const X11Connection& connection, std::uint32_t pixmap, std::uint32_t visual,
                        std::uint32_t border);

}  // namespace quillo
