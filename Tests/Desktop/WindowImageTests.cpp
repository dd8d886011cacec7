// A window's pixels: exactly its own, whatever covers it, and never a hole.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "QuilloLinux/Windows/X11WindowImage.h"
#include "RunningProgram.h"
#include "TestWindow.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

constexpr std::uint32_t blue = 0x1020F0;
constexpr std::uint32_t red = 0xF01020;

ApplicationIdentity nameless(const std::string& /*windowClass*/) {
  return {};
}

/// 0xAARRGGBB
std::uint32_t pixelAt(const BitmapImage& image, std::uint32_t x, std::uint32_t y) {
  const std::uint8_t* pixel = image.pixels.data() + y * image.bytesPerRow() + x * BitmapImage::bytesPerPixel;
  return static_cast<std::uint32_t>(pixel[3]) << 24 | static_cast<std::uint32_t>(pixel[0]) << 16 |
         static_cast<std::uint32_t>(pixel[1]) << 8 | pixel[2];
}

std::size_t countOf(const BitmapImage& image, std::uint32_t colour) {
  std::size_t count = 0;
  for (std::uint32_t y = 0; y < image.height; ++y) {
    for (std::uint32_t x = 0; x < image.width; ++x) count += pixelAt(image, x, y) == colour ? 1U : 0U;
  }
  return count;
}

TestWindowOptions windowOf(std::uint32_t pixel, ArtifactRect bounds) {
  TestWindowOptions options;
  options.pixel = pixel;
  options.bounds = bounds;
  options.isUndecorated = true;
  return options;
}

void awaitListed(X11WindowImage& images, const TestWindow& window) {
  ASSERT_TRUE(eventually([&] {
    for (const CapturedWindowMetadata& listed : images.capturableWindows()) {
      if (listed.windowID == window.id()) return true;
    }
    return false;
  }));
}

std::string reasonOf(X11WindowImage& images, std::uint32_t windowID) {
  try {
    const auto image = images.image(windowID);
    return image ? "a picture" : "no picture";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

constexpr const char* gone = "The window is no longer on the screen.";

TEST(WindowImage, coveredWindowGivesItsOwnPixels) {
  X11WindowImage images(nameless);
  ASSERT_TRUE(images.isAllowed());
  const TestWindow below(windowOf(blue, {.x = 100, .y = 100, .width = 300, .height = 200}));
  awaitListed(images, below);
  const TestWindow above(windowOf(red, {.x = 50, .y = 50, .width = 600, .height = 500}));
  awaitListed(images, above);

  const auto image = images.image(below.id());
  ASSERT_TRUE(image.has_value());
  EXPECT_EQ(image->width, 300U);
  EXPECT_EQ(image->height, 200U);
  EXPECT_TRUE(image->isOpaque);
  EXPECT_EQ(countOf(*image, 0xFF000000 | blue), 300U * 200U);
}

TEST(WindowImage, blackIsAColourWhereItIsDrawn) {
  X11WindowImage images(nameless);
  const TestWindow black(windowOf(0, {.x = 100, .y = 100, .width = 300, .height = 200}));
  awaitListed(images, black);
  EXPECT_EQ(countOf(images.image(black.id()).value(), 0xFF000000), 300U * 200U);
  const TestWindow above(windowOf(red, {.x = 50, .y = 50, .width = 200, .height = 500}));
  awaitListed(images, above);
  EXPECT_EQ(countOf(images.image(black.id()).value(), 0xFF000000), 300U * 200U);
}

TEST(WindowImage, pictureIsOfTheMomentAndSizeItIsTakenIn) {
  X11WindowImage images(nameless);
  TestWindow window(windowOf(blue, {.x = 100, .y = 100, .width = 300, .height = 200}));
  awaitListed(images, window);
  images.prepare(window.id());
  window.fill({.x = 10, .y = 20, .width = 5, .height = 4}, red);
  window.resize(350, 260);
  ASSERT_TRUE(eventually([&] {
    for (const CapturedWindowMetadata& listed : images.capturableWindows()) {
      if (listed.windowID == window.id()) return listed.frame.width == 350 && listed.frame.height == 260;
    }
    return false;
  }));
  window.fill({.x = 340, .y = 250, .width = 10, .height = 10}, red);
  const auto image = images.image(window.id());
  ASSERT_TRUE(image.has_value());
  EXPECT_EQ(image->width, 350U);
  EXPECT_EQ(image->height, 260U);
  EXPECT_EQ(pixelAt(*image, 349, 259), 0xFF000000 | red);
  EXPECT_EQ(countOf(*image, 0xFF000000), 0U);
}

TEST(WindowImage, transparencyIsKeptAndColoursAreWhole) {
  X11WindowImage images(nameless);
  TestWindowOptions options = windowOf(0x80402000, {.x = 100, .y = 100, .width = 100, .height = 100});
  options.depth = 32;
  const TestWindow window(options);
  awaitListed(images, window);
  const auto image = images.image(window.id());
  ASSERT_TRUE(image.has_value());
  EXPECT_FALSE(image->isOpaque);
  EXPECT_EQ(countOf(*image, 0x80804000), 100U * 100U);
}

TEST(WindowImage, windowThatIsGoneGivesAReason) {
  X11WindowImage images(nameless);
  TestWindow unmapped(windowOf(blue, {.x = 100, .y = 100, .width = 300, .height = 200}));
  TestWindow destroyed(windowOf(blue, {.x = 100, .y = 100, .width = 300, .height = 200}));
  awaitListed(images, unmapped);
  awaitListed(images, destroyed);
  images.prepare(destroyed.id());
  destroyed.destroy();
  EXPECT_EQ(reasonOf(images, destroyed.id()), gone);
  unmapped.unmap();
  EXPECT_EQ(reasonOf(images, unmapped.id()), gone);
  EXPECT_EQ(reasonOf(images, 1), gone);
}

TEST(WindowImage, stoppedProgramsHoleIsNoPicture) {
  X11WindowImage images(nameless);
  const RunningProgram editor({"mousepad", writeFile("letter.txt", "Dear reader")});
  const std::uint32_t window = awaitWindow(editor).windowID;
  readWindowHolding(editor, {"Dear reader"});
  const auto whole = images.image(window);
  ASSERT_TRUE(whole.has_value());
  EXPECT_LT(countOf(*whole, 0xFF000000), whole->pixels.size() / 8) << "the editor is not drawn in black";

  const TestWindow above(windowOf(red, {.x = 0, .y = 0, .width = 1200, .height = 900}));
  awaitListed(images, above);
  // A program that answers draws what was covered.
  const auto covered = images.image(window);
  ASSERT_TRUE(covered.has_value());
  EXPECT_EQ(countOf(*covered, 0xFF000000 | red), 0U);
  EXPECT_LT(countOf(*covered, 0xFF000000), covered->pixels.size() / 8);

  editor.signal(SIGSTOP);
  EXPECT_EQ(reasonOf(images, window), "The application does not draw the part of its window that is covered.");
  EXPECT_EQ(reasonOf(images, above.id()), "a picture");
}

}  // namespace
}  // namespace quillo::test
