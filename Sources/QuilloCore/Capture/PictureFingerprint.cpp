#include "QuilloCore/Capture/PictureFingerprint.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace quillo {
namespace {

/// Goes on with the pixels of one row of a square. Neither cryptographic nor portable: it never leaves the process.
std::uint64_t mixed(std::uint64_t hash, const std::uint8_t* pixels, std::size_t count) {
  constexpr std::uint64_t prime = 0x100000001B3U;
  for (std::size_t i = 0; i < count; ++i, pixels += BitmapImage::bytesPerPixel) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, pixels, sizeof(pixel));
    hash = (hash ^ pixel) * prime;
  }
  return hash;
}

}  // namespace

PictureFingerprint fingerprintOf(const BitmapImage& image) {
  constexpr std::uint32_t size = PictureFingerprint::squareSize;
  const std::size_t columns = (image.width + size - 1) / size;
  const std::size_t rows = (image.height + size - 1) / size;
  PictureFingerprint result{.width = image.width, .height = image.height, .squares = {}};
  result.squares.resize(columns * rows);
  for (std::size_t y = 0; y < image.height; ++y) {
    const std::uint8_t* const row = image.pixels.data() + y * image.bytesPerRow();
    for (std::size_t column = 0; column < columns; ++column) {
      const std::size_t x = column * size;
      std::uint64_t& square = result.squares[y / size * columns + column];
      square = mixed(square, row + x * BitmapImage::bytesPerPixel, std::min<std::size_t>(size, image.width - x));
    }
  }
  return result;
}

double changedShare(const PictureFingerprint& before, const PictureFingerprint& after) {
  if (before.width != after.width || before.height != after.height) return 1;
  if (before.squares.empty()) return 0;
  std::size_t changed = 0;
  for (std::size_t i = 0; i < before.squares.size(); ++i) changed += before.squares[i] != after.squares[i] ? 1U : 0U;
  return static_cast<double>(changed) / static_cast<double>(before.squares.size());
}

}  // namespace quillo
