// The inspector of the application itself, driven by keys and the pointer.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "ApplicationFixture.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

class Inspector : public Application {
 protected:
  static const AccessibilityNode& named(const AccessibilitySnapshot& window, std::string_view role,
                                        std::string_view name) {
    for (const AccessibilityNode& node : window.nodes) {
      if (node.role == role && textAttribute(node, "AXTitle").starts_with(name)) return node;
    }
    throw std::runtime_error(fmt::format("there is no {} named {}", role, name));
  }

  static void pointAt(double x, double y) {
    runProgram({"xdotool", "mousemove", "--sync", std::to_string(std::lround(x)), std::to_string(std::lround(y))});
  }

  /// Whether the screenshot comes to say this of its size and of what is lit, or to say it no more.
  static bool pictureSays(const RunningProgram& application, const std::string& words, bool isSaid = true) {
    return eventually([&] {
      const AccessibilitySnapshot window = readWindow(awaitWindow(application));
      const std::string all = textAttribute(named(window, "AXGroup", "Screenshot"), "AXDescription");
      return (all.find(words) != std::string::npos) == isSaid;
    });
  }

  /// The pixels of a part of the application's window.
  static std::vector<std::uint8_t> pixels(const RunningProgram& application, const ArtifactRect& frame) {
    const WindowCaptureTarget target = awaitWindow(application);
    X11WindowImage images([](const std::string& /*windowClass*/) { return ApplicationIdentity{}; });
    const BitmapImage image = images.image(target.windowID).value();
    const auto left = static_cast<std::size_t>(frame.x - target.windowFrame.x);
    const auto top = static_cast<std::size_t>(frame.y - target.windowFrame.y);
    const auto width = static_cast<std::size_t>(frame.width) * BitmapImage::bytesPerPixel;
    std::vector<std::uint8_t> part;
    for (std::size_t row = top; row < top + static_cast<std::size_t>(frame.height); ++row) {
      const auto begin = image.pixels.begin() +
                         static_cast<std::ptrdiff_t>(row * image.bytesPerRow() + left * BitmapImage::bytesPerPixel);
      part.insert(part.end(), begin, begin + static_cast<std::ptrdiff_t>(width));
    }
    return part;
  }
};

TEST_F(Inspector, theLedgerTheScreenshotAndTheClipboardAgree) {
  const auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); }));
  {
    const RunningProgram captured({QUILLO_QT_PROGRAM});
    readWindowHolding(captured, {"Remember me"});
    press("ctrl+alt+super+c");
    ASSERT_TRUE(eventually([] { return library().find("Qt widgets") != std::string::npos; }));
  }
  beginRenaming();
  press("alt+l");
  press("Home");
  ASSERT_TRUE(pictureSays(*application, "Lit: window Qt widgets"));
  press("ctrl+c");
  EXPECT_TRUE(eventually([] { return clipboardText() == "Qt widgets"; })) << clipboardText();
  press("alt+l");
  press("Down");
  press("Down");
  EXPECT_TRUE(pictureSays(*application, "Lit: menu item File"));
  press("ctrl+b");
  EXPECT_TRUE(eventually([] { return clipboardText() == "menu item “File”\n"; })) << clipboardText();

  // Either side shows what the pointer is at on the other.
  const AccessibilitySnapshot window = readWindow(awaitWindow(*application));
  const ArtifactRect screenshot = named(window, "AXGroup", "Screenshot").frame.value();
  const ArtifactRect ledger = named(window, "AXOutline", "Ledger").frame.value();
  const ArtifactRect line = named(window, "AXCell", "section Account").frame.value();
  pointAt(10, 10);
  const auto picture = pixels(*application, screenshot);
  pointAt(line.x + 20, line.y + line.height / 2);
  EXPECT_TRUE(eventually([&] { return pixels(*application, screenshot) != picture; })) << "the line lights its place";
  pointAt(10, 10);
  EXPECT_TRUE(eventually([&] { return pixels(*application, screenshot) == picture; }));
  const auto lines = pixels(*application, ledger);
  pointAt(screenshot.x + screenshot.width / 2, screenshot.y + 60);
  EXPECT_TRUE(eventually([&] { return pixels(*application, ledger) != lines; })) << "the place lights its line";
  runProgram({"xdotool", "click", "1"});
  EXPECT_TRUE(pictureSays(*application, "Lit: text field"));

  // The rest of the inspector's keys.
  runProgram({"xdotool", "keydown", "ctrl", "click", "4", "keyup", "ctrl"});
  EXPECT_TRUE(pictureSays(*application, "46 percent", false));
  press("1");
  EXPECT_TRUE(pictureSays(*application, "100 percent"));
  press("0");
  EXPECT_TRUE(pictureSays(*application, "46 percent"));
  press("alt+l");
  type("\t");
  press("ctrl+y");
  EXPECT_TRUE(eventually([] { return activeWindow() == "Qt widgets\n"; })) << "a full-size look";
  press("Escape");
  EXPECT_TRUE(eventually([] { return activeWindow() == "Quillo\n"; }));
  press("F9");
  EXPECT_TRUE(eventually([&] { return findNode(readWindow(awaitWindow(*application)), "AXList") == nullptr; }));
  press("F9");
  EXPECT_TRUE(eventually([&] { return findNode(readWindow(awaitWindow(*application)), "AXList") != nullptr; }));
  press("ctrl+f");
  press("Return");
  press("Return");
  type("An account");
  EXPECT_TRUE(eventually([] { return library().find("An account") != std::string::npos; })) << "Enter goes to edit";
}

}  // namespace
}  // namespace quillo::test
