#include "QuilloLinux/Windows/UndrawnArea.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace quillo::test {
namespace {

TEST(UndrawnArea, agreesWithAPictureOfTheSameStrokes) {
  constexpr std::int32_t side = 24;
  constexpr std::size_t pixelCount = 24UL * 24;
  const auto indexOf = [](std::int32_t x, std::int32_t y) {
    return static_cast<std::size_t>(y) * side + static_cast<std::size_t>(x);
  };
  std::uint32_t random = 7;
  const auto next = [&](std::int32_t bound) {
    random = random * 1664525 + 1013904223;
    return static_cast<std::int32_t>((random >> 16) % static_cast<std::uint32_t>(bound));
  };
  for (int round = 0; round < 200; ++round) {
    UndrawnArea area;
    std::vector<int> pixels(pixelCount);
    for (int stroke = next(8); stroke > 0; --stroke) {
      const PixelRect rect{next(side) - 4, next(side) - 4, next(side), next(side)};
      const bool isDrawn = next(4) != 0;
      isDrawn ? area.draw(rect) : area.keepOnly(rect);
      for (std::int32_t y = 0; y < side; ++y) {
        for (std::int32_t x = 0; x < side; ++x) {
          const bool isInside = !rect.intersection({x, y, 1, 1}).isEmpty();
          if (isInside == isDrawn) pixels[indexOf(x, y)] = isDrawn ? 1 : 0;
        }
      }
    }
    // Each pixel that no stroke met lies in exactly one rectangle, each other one in none.
    for (const PixelRect& rect : area.within(side, side)) {
      for (std::int32_t y = rect.y; y < rect.y + rect.height; ++y) {
        for (std::int32_t x = rect.x; x < rect.x + rect.width; ++x) ++pixels[indexOf(x, y)];
      }
    }
    EXPECT_EQ(pixels, std::vector<int>(pixelCount, 1)) << "round " << round;
  }
}

TEST(UndrawnArea, grownWindowHasNewPartsToDraw) {
  UndrawnArea area;
  area.draw({0, 0, 100, 50});
  EXPECT_TRUE(area.within(100, 50).empty());
  EXPECT_EQ(area.within(120, 50), (std::vector<PixelRect>{{100, 0, 20, 50}}));
}

TEST(UndrawnArea, specksWithoutEndAreNotFollowed) {
  UndrawnArea area;
  for (std::int32_t i = 0; i < 20'000; ++i) area.draw({i % 200 * 3, i / 200 * 3, 1, 1});
  EXPECT_FALSE(area.within(600, 300).empty());
  EXPECT_LT(area.within(600, 300).size(), 5000U);
}

}  // namespace
}  // namespace quillo::test
