// The window manager's list as the capture reads it, against windows whose every property is known.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowList.h"
#include "RunningProgram.h"
#include "TestWindow.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;

std::optional<WindowListEntry> entryOf(const TestWindow& window) {
  for (const WindowListEntry& entry : X11WindowList().onScreenFrontToBack()) {
    if (entry.windowID == window.id()) return entry;
  }
  return std::nullopt;
}

template <class Condition>
::testing::AssertionResult eventuallyListed(const TestWindow& window, Condition condition) {
  std::optional<WindowListEntry> entry;
  const bool holds = eventually([&] { return (entry = entryOf(window)) && condition(*entry); });
  if (holds) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << (entry ? "the window is listed otherwise" : "the window is not listed");
}

::testing::AssertionResult eventuallyListed(const TestWindow& window) {
  return eventuallyListed(window, [](const WindowListEntry&) { return true; });
}

std::vector<std::uint32_t> listedIdentifiers() {
  std::vector<std::uint32_t> identifiers;
  for (const WindowListEntry& entry : X11WindowList().onScreenFrontToBack()) identifiers.push_back(entry.windowID);
  return identifiers;
}

TEST(WindowList, windowIsListedByItsClientRectangle) {
  TestWindow window({.bounds = {.x = 200, .y = 150, .width = 400, .height = 300},
                     .title = "A\ntitle \xE2\x80\xA8of two\tlines",
                     .isUndecorated = true});
  ASSERT_TRUE(eventuallyListed(window, [](const auto& entry) { return entry.equivalentBounds.empty(); }));
  WindowListEntry expected;
  expected.windowID = window.id();
  expected.processIdentifier = ::getpid();
  expected.bounds = {.x = 200, .y = 150, .width = 400, .height = 300};
  expected.isOnScreen = true;
  expected.title = entryOf(window)->title;
  EXPECT_EQ(entryOf(window), expected);
  ASSERT_TRUE(expected.title.has_value());
  EXPECT_EQ(expected.title->find_first_of("\n\t"), std::string::npos) << *expected.title;
  EXPECT_EQ(expected.title->find("\xE2\x80\xA8"), std::string::npos) << *expected.title;

  window.setWords("_GTK_FRAME_EXTENTS", "CARDINAL", {10, 20, 30, 40});
  EXPECT_EQ(entryOf(window)->bounds, expected.bounds);
  EXPECT_THAT(entryOf(window)->equivalentBounds,
              ElementsAre(ArtifactRect{.x = 210, .y = 180, .width = 370, .height = 230}));
  window.setWords("_NET_WM_WINDOW_OPACITY", "CARDINAL", {0});
  EXPECT_EQ(entryOf(window)->alpha, 0);
}

TEST(WindowList, managersFrameIsAnEquivalentRectangle) {
  const TestWindow window({.bounds = {.x = 200, .y = 150, .width = 400, .height = 300}});
  ASSERT_TRUE(eventuallyListed(window, [](const auto& entry) { return entry.equivalentBounds.size() == 1; }));
  const WindowListEntry entry = *entryOf(window);
  const ArtifactRect& frame = entry.equivalentBounds[0];
  EXPECT_EQ(entry.bounds.width, 400);
  EXPECT_EQ(entry.bounds.height, 300);
  // Wider by the same on both sides, and with a title bar above.
  EXPECT_EQ(entry.bounds.minX() - frame.minX(), frame.maxX() - entry.bounds.maxX());
  EXPECT_GE(entry.bounds.minY() - frame.minY(), 10);
  EXPECT_GE(frame.maxY(), entry.bounds.maxY());
}

TEST(WindowList, titleFallsBackToTheOldName) {
  TestWindow window({.title = ""});
  ASSERT_TRUE(eventuallyListed(window));
  EXPECT_EQ(entryOf(window)->title, std::nullopt);
  window.setText("WM_NAME", "STRING", "Caf\xE9");
  EXPECT_EQ(entryOf(window)->title, "Caf\u00E9");
  window.setText("_NET_WM_NAME", "UTF8_STRING", "New \xFF name");
  EXPECT_EQ(entryOf(window)->title, "New \uFFFD name");
}

TEST(WindowList, frontWindowComesFirst) {
  TestWindow first({.title = "First"});
  ASSERT_TRUE(eventuallyListed(first));
  const TestWindow second({.title = "Second"});
  ASSERT_TRUE(eventuallyListed(second));
  first.activate();
  EXPECT_TRUE(eventually([&] { return listedIdentifiers() == std::vector{first.id(), second.id()}; }));
}

TEST(WindowList, onlyWhatIsOnTheScreenIsListed) {
  TestWindow minimised({.title = "Minimised"});
  TestWindow elsewhere({.title = "Elsewhere"});
  TestWindow unmapped({.title = "Unmapped"});
  TestWindow destroyed({.title = "Destroyed"});
  const TestWindow here({.title = "Here"});
  for (const TestWindow* window :
       std::initializer_list<const TestWindow*>{&minimised, &elsewhere, &unmapped, &destroyed, &here}) {
    ASSERT_TRUE(eventuallyListed(*window));
  }
  minimised.minimise();
  elsewhere.moveToDesktop(1);
  unmapped.unmap();
  destroyed.destroy();
  EXPECT_TRUE(eventually([&] { return listedIdentifiers() == std::vector{here.id()}; }));
}

TEST(WindowList, partsOfTheShellAreOnLayersOfTheirOwn) {
  for (const char* type :
       {"_NET_WM_WINDOW_TYPE_DOCK", "_NET_WM_WINDOW_TYPE_DESKTOP", "_NET_WM_WINDOW_TYPE_NOTIFICATION"}) {
    const TestWindow window({.type = type});
    ASSERT_TRUE(eventuallyListed(window)) << type;
    EXPECT_NE(entryOf(window)->layer, 0) << type;
    const auto application = X11RunningApplications({}).application(::getpid());
    ASSERT_TRUE(application.has_value());
    EXPECT_FALSE(application->mayBeCaptured) << type;
  }
  for (const char* type : {"_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG", "_NET_WM_WINDOW_TYPE_UTILITY"}) {
    const TestWindow window({.type = type});
    ASSERT_TRUE(eventuallyListed(window)) << type;
    EXPECT_EQ(entryOf(window)->layer, 0) << type;
  }
}

TEST(WindowList, windowsOwnerIsTheProcessThatMadeIt) {
  // Somebody else's number, and none at all.
  const TestWindow forged({.pid = 1});
  const TestWindow silent({.pid = 0});
  ASSERT_TRUE(eventuallyListed(forged));
  ASSERT_TRUE(eventuallyListed(silent));
  EXPECT_EQ(entryOf(forged)->processIdentifier, ::getpid());
  EXPECT_EQ(entryOf(silent)->processIdentifier, ::getpid());
  EXPECT_EQ(X11RunningApplications({}).application(1), std::nullopt);
}

TEST(WindowList, vanishingWindowsAreSkipped) {
  const TestWindow lasting({.title = "Lasting"});
  ASSERT_TRUE(eventuallyListed(lasting));
  std::atomic<bool> isOver = false;
  std::thread churn([&] {
    while (!isOver) TestWindow({.title = "Fleeting"});
  });
  for (int i = 0; i < 100; ++i) EXPECT_THAT(listedIdentifiers(), testing::Contains(lasting.id()));
  isOver = true;
  churn.join();
}

TEST(WindowList, displayThatIsNotThereIsAnError) {
  const std::string display = std::getenv("DISPLAY");
  for (const char* other : {":4998", "", "no display"}) {
    ::setenv("DISPLAY", other, 1);
    EXPECT_THROW(X11WindowList().onScreenFrontToBack(), WindowScreenshotCaptureError) << other;
    EXPECT_EQ(X11RunningApplications({}).frontmostApplication(), std::nullopt) << other;
  }
  ::setenv("DISPLAY", display.c_str(), 1);
  EXPECT_TRUE(X11WindowList().onScreenFrontToBack().empty());
}

TEST(RunningApplications, activeWindowsClassNamesTheApplication) {
  TestWindow window;
  window.setText("WM_CLASS", "STRING", std::string("instance\0Some.Class\0", 20));
  ASSERT_TRUE(eventuallyListed(window));
  window.activate();
  std::string asked;
  X11RunningApplications known([&](const std::string& windowClass) {
    asked = windowClass;
    return ApplicationIdentity{"A name", "some.entry"};
  });
  X11RunningApplications unknown([](const std::string&) { return ApplicationIdentity{}; });
  ASSERT_TRUE(eventually([&] { return known.frontmostApplication().has_value(); }));
  EXPECT_EQ(known.frontmostApplication(), (RunningApplication{::getpid(), "A name", "some.entry", true}));
  EXPECT_EQ(asked, "Some.Class");
  EXPECT_EQ(unknown.application(::getpid()), (RunningApplication{::getpid(), "Some.Class", "Some.Class", true}));
  EXPECT_EQ(unknown.application(1), std::nullopt);
}

}  // namespace
}  // namespace quillo::test
