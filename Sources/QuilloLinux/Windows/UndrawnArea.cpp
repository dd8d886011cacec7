#include "QuilloLinux/Windows/UndrawnArea.h"

#include <algorithm>
#include <utility>

namespace quillo {
namespace {

/// A program that draws in so many specks is believed to have drawn too little, rather than followed without end.
constexpr std::size_t maximumRectCount = 4096;

/// Adds the pieces of `whole` that lie outside `hole`.
void addWithout(const PixelRect& hole, const PixelRect& whole, std::vector<PixelRect>& pieces) {
  const PixelRect inside = whole.intersection(hole);
  if (inside.isEmpty()) {
    pieces.push_back(whole);
    return;
  }
  const auto add = [&](const PixelRect& piece) {
    if (!piece.isEmpty()) pieces.push_back(piece);
  };
  const std::int32_t bottom = inside.y + inside.height;
  const std::int32_t right = inside.x + inside.width;
  add({whole.x, whole.y, whole.width, inside.y - whole.y});
  add({whole.x, inside.y, inside.x - whole.x, inside.height});
  add({right, inside.y, whole.x + whole.width - right, inside.height});
  add({whole.x, bottom, whole.width, whole.y + whole.height - bottom});
}

}  // namespace

PixelRect PixelRect::intersection(const PixelRect& other) const {
  const std::int32_t left = std::max(x, other.x);
  const std::int32_t top = std::max(y, other.y);
  const std::int32_t right = std::min(x + width, other.x + other.width);
  const std::int32_t bottom = std::min(y + height, other.y + other.height);
  return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

void UndrawnArea::draw(const PixelRect& rect) {
  if (rects_.size() > maximumRectCount) return;
  std::vector<PixelRect> rest;
  for (const PixelRect& old : rects_) addWithout(rect, old, rest);
  rects_ = std::move(rest);
}

void UndrawnArea::keepOnly(const PixelRect& rect) {
  std::vector<PixelRect> rest;
  for (const PixelRect& old : rects_) {
    if (const PixelRect inside = old.intersection(rect); !inside.isEmpty()) rest.push_back(inside);
  }
  addWithout(rect, everything, rest);
  rects_ = std::move(rest);
}

std::vector<PixelRect> UndrawnArea::within(std::int32_t width, std::int32_t height) const {
  std::vector<PixelRect> inside;
  for (const PixelRect& rect : rects_) {
    const PixelRect part = rect.intersection({0, 0, width, height});
    if (!part.isEmpty()) inside.push_back(part);
  }
  return inside;
}

}  // namespace quillo
