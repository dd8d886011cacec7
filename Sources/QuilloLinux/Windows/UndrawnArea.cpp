#include "QuilloLinux/Windows/UndrawnArea.h"

#include <algorithm>
#include <utility>

namespace quillo {
namespace {

/// A program that draws in so many specks is believed to have drawn too little, rather than followed without end.
constexpr std::size_t maximumRectCount = 4096;

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
  const auto keep = [&](const PixelRect& piece) {
    if (!piece.isEmpty()) rest.push_back(piece);
  };
  for (const PixelRect& old : rects_) {
    const PixelRect drawn = old.intersection(rect);
    if (drawn.isEmpty()) {
      rest.push_back(old);
      continue;
    }
    const std::int32_t bottom = drawn.y + drawn.height;
    const std::int32_t right = drawn.x + drawn.width;
    keep({old.x, old.y, old.width, drawn.y - old.y});
    keep({old.x, drawn.y, drawn.x - old.x, drawn.height});
    keep({right, drawn.y, old.x + old.width - right, drawn.height});
    keep({old.x, bottom, old.width, old.y + old.height - bottom});
  }
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
