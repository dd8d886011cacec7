#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillo {

/// An uncompressed picture: 8 bits a channel, red, green, blue, alpha (not premultiplied), rows from the top without
/// padding.
struct BitmapImage {
  static constexpr std::size_t bytesPerPixel = 4;

  std::uint32_t width = 0;   ///< pixels
  std::uint32_t height = 0;  ///< pixels
  std::vector<std::uint8_t> pixels;
  bool isOpaque = true;  ///< every alpha is 255

  std::size_t bytesPerRow() const { return width * bytesPerPixel; }
  bool isConsistent() const { return width > 0 && height > 0 && pixels.size() == bytesPerRow() * height; }

  friend bool operator==(const BitmapImage&, const BitmapImage&) = default;
};

}  // namespace quillo
