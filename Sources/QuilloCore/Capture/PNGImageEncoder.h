#pragma once

#include <string>

#include "QuilloCore/Capture/BitmapImage.h"

namespace quillo {

namespace PNGImageEncoder {

/// The bytes of a PNG file; RGB for an opaque image, RGBA otherwise. Equal images give equal bytes. Takes tens of
/// milliseconds for a screen, so not for a thread that must answer the user.
/// Throws WindowScreenshotCaptureError: pngDestinationCreationFailed or pngEncodingFailed (also for an image without
/// pixels or with too few bytes).
std::string encode(const BitmapImage& image);

}  // namespace PNGImageEncoder
}  // namespace quillo
