// A window's pixels: exactly its own, whatever covers it, and never a hole.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "QuilloLinux/Windows/UndrawnArea.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "QuilloLinux/X11/X11Connection.h"
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

constexpr const char* undrawn = "The application does not draw the part of its window that is covered.";
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

/// The rectangle around all pixels in which two pictures differ.
PixelRect differenceOf(const BitmapImage& a, const BitmapImage& b) {
  const auto width = static_cast<std::int32_t>(a.width);
  const auto height = static_cast<std::int32_t>(a.height);
  if (a.width != b.width || a.height != b.height) return {.x = 0, .y = 0, .width = width, .height = height};
  std::int32_t left = width;
  std::int32_t top = height;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  for (std::int32_t y = 0; y < height; ++y) {
    for (std::int32_t x = 0; x < width; ++x) {
      const auto column = static_cast<std::uint32_t>(x);
      const auto row = static_cast<std::uint32_t>(y);
      if (pixelAt(a, column, row) == pixelAt(b, column, row)) continue;
      left = std::min(left, x);
      right = std::max(right, x + 1);
      top = std::min(top, y);
      bottom = y + 1;
    }
  }
  return right == 0 ? PixelRect{} : PixelRect{left, top, right - left, bottom - top};
}

/// Asks the window manager and awaits what it does.
void resizeProgram(std::uint32_t window, std::uint32_t width, std::uint32_t height) {
  runProgram(
      {"xdotool", "windowsize", "--sync", std::to_string(window), std::to_string(width), std::to_string(height)});
}

TEST(WindowImage, programThatIsResizedAfterFreezingIsPicturedAsItIsLaidOutThen) {
  X11WindowImage images(nameless);
  const Editor editor;
  const std::uint32_t window = editor.window();
  // The caret blinks.
  const auto areAlike = [](const BitmapImage& a, const BitmapImage& b) {
    const PixelRect difference = differenceOf(a, b);
    return difference.width <= 3 && difference.height <= 30;
  };
  for (const bool isCovered : {false, true}) {
    std::optional<TestWindow> above;
    if (isCovered) {
      above.emplace(windowOf(red, {.x = 0, .y = 0, .width = 1200, .height = 900}));
      awaitListed(images, *above);
    }
    for (const auto& [width, height] : {std::pair{900U, 620U}, {500U, 300U}, {700U, 250U}, {640U, 480U}}) {
      SCOPED_TRACE(fmt::format("{} by {}, {}", width, height, isCovered ? "covered" : "in front"));
      images.prepare(window);
      resizeProgram(window, width, height);
      const auto image = images.image(window);
      ASSERT_TRUE(image.has_value());
      EXPECT_EQ(image->width, width);
      EXPECT_EQ(image->height, height);
      EXPECT_EQ(countOf(*image, 0xFF000000 | red), 0U);
      BitmapImage settled = images.image(window).value();
      EXPECT_TRUE(eventually([&] {
        const BitmapImage last = std::exchange(settled, images.image(window).value());
        return areAlike(last, settled);
      }));
      EXPECT_TRUE(areAlike(*image, settled));
    }
  }
  const TestWindow above(windowOf(red, {.x = 0, .y = 0, .width = 1200, .height = 900}));
  awaitListed(images, above);
  editor.program().signal(SIGSTOP);
  images.prepare(window);
  resizeProgram(window, 660, 490);
  EXPECT_EQ(reasonOf(images, window), undrawn);
}

/// Whether some program composes the screen.
bool isComposited() {
  const auto display = X11Connection::open();
  const std::array<std::string_view, 1> names = {"_NET_WM_CM_S0"};
  const std::uint32_t selection = internAtoms(display->get(), names).front();
  const auto owner =
      awaitReply<xcb_get_selection_owner_reply_t>(display->get(), xcb_get_selection_owner(display->get(), selection));
  return owner && owner->owner != XCB_NONE;
}

TEST(WindowImage, compositorThatRunsOrEndsChangesNoPicture) {
  if (runProgram({"which", "xcompmgr"}).exitStatus != 0) GTEST_SKIP() << "there is no compositor";
  X11WindowImage images(nameless);
  const Editor editor;
  const std::uint32_t program = editor.window();
  TestWindowOptions options = windowOf(blue, {.x = 100, .y = 100, .width = 300, .height = 200});
  const TestWindow decorated({.bounds = {.x = 100, .y = 100, .width = 300, .height = 200}, .pixel = blue});
  const TestWindow managed(options);
  options.isUnmanaged = true;
  const TestWindow unmanaged(options);
  for (const TestWindow* window : {&decorated, &managed}) awaitListed(images, *window);
  const auto expectAllBlue = [&](const char* when) {
    for (const TestWindow* window : {&decorated, &managed, &unmanaged})
      EXPECT_EQ(countOf(images.image(window->id()).value(), 0xFF000000 | blue), 300U * 200U) << when;
  };
  {
    const RunningProgram compositor({"xcompmgr"});
    ASSERT_TRUE(eventually(isComposited));
    expectAllBlue("uncovered");
    // A compositor keeps the window whole, so that even a program that stops has a picture.
    editor.program().signal(SIGSTOP);
    const BitmapImage uncovered = images.image(program).value();
    const TestWindow above(windowOf(red, {.x = 0, .y = 0, .width = 1200, .height = 900}));
    awaitListed(images, above);
    expectAllBlue("covered");
    EXPECT_TRUE(differenceOf(images.image(program).value(), uncovered).isEmpty());
    images.prepare(program);
    compositor.signal(SIGKILL);
    ASSERT_TRUE(eventually([] { return !isComposited(); }));
    EXPECT_TRUE(differenceOf(images.image(program).value(), uncovered).isEmpty()) << "ended after freezing";
    expectAllBlue("covered, and the compositor ended");
    EXPECT_EQ(reasonOf(images, program), undrawn);
  }
  editor.program().signal(SIGCONT);
  EXPECT_EQ(countOf(images.image(program).value(), 0xFF000000 | red), 0U);
  expectAllBlue("afterwards");
}

TEST(WindowImage, whatNobodyDrewIsNotTakenFromTheScreen) {
  X11WindowImage images(nameless);
  TestWindowOptions options = windowOf(0, {.x = 100, .y = 100, .width = 300, .height = 200});
  options.isUnmanaged = options.isUnpainted = true;
  TestWindow below(options);
  below.fill({.x = 0, .y = 0, .width = 300, .height = 200}, blue);
  EXPECT_EQ(countOf(images.image(below.id()).value(), 0xFF000000 | blue), 300U * 200U);
  options = windowOf(red, {.x = 150, .y = 50, .width = 600, .height = 500});
  options.isUnmanaged = true;
  const TestWindow above(options);
  EXPECT_EQ(reasonOf(images, below.id()), undrawn);
  images.prepare(below.id());
  below.fill({.x = 0, .y = 0, .width = 300, .height = 200}, blue);
  EXPECT_EQ(countOf(images.image(below.id()).value(), 0xFF000000 | blue), 300U * 200U);
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
  const Editor editor;
  const std::uint32_t window = editor.window();
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

  editor.program().signal(SIGSTOP);
  EXPECT_EQ(reasonOf(images, window), undrawn);
  EXPECT_EQ(reasonOf(images, above.id()), "a picture");
}

}  // namespace
}  // namespace quillo::test
