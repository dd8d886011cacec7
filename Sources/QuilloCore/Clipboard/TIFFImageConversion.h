#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

namespace TIFFImageConversion {

/// The picture of a PNG file as an uncompressed TIFF file of 8 bits a channel, RGB or RGB with alpha. Nothing for a
/// file that cannot be read to its end, or whose picture is larger than any screen. Takes some tens of milliseconds for
/// a screen.
std::optional<std::string> fromPNG(std::string_view png);

/// Whether `fromPNG` can be expected to succeed: the file is whole, the sums of its parts are right, and its picture is
/// not too large. Looks at every byte once and decodes nothing.
bool isLikely(std::string_view png);

}  // namespace TIFFImageConversion
}  // namespace quillo
