#include "QuilloCore/Capture/PNGImageEncoder.h"

#include <gtest/gtest.h>
#include <png.h>

#include <string>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"

namespace quillo::test {
namespace {

struct Decoded {
  bool hasAlpha = false;
  BitmapImage image;
};

/// By the library's other interface, the one for readers.
Decoded decode(const std::string& bytes) {
  Decoded decoded;
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()) == 0) return decoded;
  decoded.hasAlpha = (png.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  png.format = PNG_FORMAT_RGBA;
  decoded.image.width = png.width;
  decoded.image.height = png.height;
  decoded.image.isOpaque = !decoded.hasAlpha;
  decoded.image.pixels.resize(PNG_IMAGE_SIZE(png));
  png_image_finish_read(&png, nullptr, decoded.image.pixels.data(), 0, nullptr);
  return decoded;
}

/// Flat areas as interfaces have them, or noise on a gradient as photographs have it.
BitmapImage picture(std::uint32_t width, std::uint32_t height, bool isPhotograph, bool isOpaque) {
  BitmapImage image;
  image.width = width;
  image.height = height;
  image.isOpaque = isOpaque;
  std::uint32_t noise = 1;
  for (std::uint32_t y = 0; y < height; ++y) {
    for (std::uint32_t x = 0; x < width; ++x) {
      noise = noise * 1664525 + 1013904223;
      const std::uint32_t level = isPhotograph ? (x + y + (noise >> 30)) : (x / 40 % 2 * 200);
      for (const std::uint32_t channel : {level, level / 2, 255 - level % 256}) {
        image.pixels.push_back(static_cast<std::uint8_t>(channel));
      }
      image.pixels.push_back(isOpaque ? 255 : static_cast<std::uint8_t>(x * 3));
    }
  }
  return image;
}

TEST(PNGImageEncoder, everyPixelComesBack) {
  for (const bool isPhotograph : {false, true}) {
    for (const bool isOpaque : {false, true}) {
      for (const auto& [width, height] : {std::pair{1U, 1U}, {333U, 217U}, {1U, 500U}}) {
        const BitmapImage image = picture(width, height, isPhotograph, isOpaque);
        const Decoded decoded = decode(PNGImageEncoder::encode(image));
        EXPECT_EQ(decoded.hasAlpha, !isOpaque);
        EXPECT_TRUE(decoded.image == image) << width << "x" << height << " " << isPhotograph << isOpaque;
      }
    }
  }
}

TEST(PNGImageEncoder, imagesWithoutTheirPixelsAreRefused) {
  BitmapImage image = picture(4, 4, false, true);
  image.pixels.pop_back();
  for (const BitmapImage& broken : {image, BitmapImage{}}) {
    EXPECT_THROW(PNGImageEncoder::encode(broken), WindowScreenshotCaptureError);
  }
}

}  // namespace
}  // namespace quillo::test
