#pragma once

#include <cstdint>
#include <vector>

#include "QuilloCore/Capture/BitmapImage.h"

namespace quillo {

/// What is kept of a picture to tell later whether, and how much of, another one differs: a number for each small
/// square.
struct PictureFingerprint {
  static constexpr std::uint32_t squareSize = 16;  ///< pixels; those at the right and lower edge may be smaller

  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::uint64_t> squares;  ///< by rows

  friend bool operator==(const PictureFingerprint&, const PictureFingerprint&) = default;
};

/// Of a consistent picture.
PictureFingerprint fingerprintOf(const BitmapImage& image);

/// The share of squares that differ, from 0 to 1; 1 for pictures of different sizes.
double changedShare(const PictureFingerprint& before, const PictureFingerprint& after);

}  // namespace quillo
