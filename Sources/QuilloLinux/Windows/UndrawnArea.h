#pragma once

#include <cstdint>
#include <vector>

namespace quillo {

/// A rectangle of pixels inside a window.
struct PixelRect {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool isEmpty() const { return width <= 0 || height <= 0; }
  PixelRect intersection(const PixelRect& other) const;

  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// The part of a window that nobody has drawn yet. It begins as everything, because the window may grow.
class UndrawnArea {
 public:
  void draw(const PixelRect& rect);

  /// Everything outside the rectangle is undrawn again.
  void keepOnly(const PixelRect& rect);

  /// What is left inside a window of this size, as rectangles that do not overlap.
  std::vector<PixelRect> within(std::int32_t width, std::int32_t height) const;

 private:
  static constexpr PixelRect everything{.x = 0, .y = 0, .width = 65536, .height = 65536};
  std::vector<PixelRect> rects_{everything};
};

}  // namespace quillo
