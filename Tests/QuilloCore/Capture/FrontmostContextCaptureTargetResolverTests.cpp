#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"

#include <algorithm>

#include "CaptureFixture.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Capture/UnknownWindowError.h"

namespace quillo::test {
namespace {

constexpr std::int32_t mail = FakeAccessibilityInterface::processIdentifier;
constexpr std::int32_t editor = 500;
constexpr std::int32_t ourselves = 600;

class FakeDesktop final : public WindowListProviding, public RunningApplicationsProviding {
 public:
  std::vector<WindowListEntry> onScreenFrontToBack() override {
    if (!isListAvailable) throw WindowScreenshotCaptureError(WindowScreenshotCaptureError::WindowListUnavailable{});
    return windows;
  }
  std::optional<RunningApplication> frontmostApplication() override {
    return frontmost ? application(*frontmost) : std::nullopt;
  }
  std::optional<RunningApplication> application(std::int32_t processIdentifier) override {
    const auto found = std::ranges::find(applications, processIdentifier, &RunningApplication::processIdentifier);
    return found == applications.end() ? std::nullopt : std::optional(*found);
  }

  bool isListAvailable = true;
  std::vector<WindowListEntry> windows;
  std::vector<RunningApplication> applications = {
      {mail, "Mail", "org.example.Mail", true}, {editor, "Editor", std::nullopt, true}, {ourselves, "Us", "us", true}};
  std::optional<std::int32_t> frontmost = mail;
};

WindowListEntry window(std::uint32_t number, std::int32_t owner, ArtifactRect bounds, std::string title = "") {
  WindowListEntry entry;
  entry.windowID = number;
  entry.processIdentifier = owner;
  entry.bounds = bounds;
  entry.isOnScreen = true;
  entry.title = std::move(title);
  return entry;
}

class TargetResolver : public testing::Test {
 protected:
  FrozenContextCaptureTarget resolve() { return resolver.resolve(); }
  std::uint32_t resolvedWindow() { return resolve().windowID; }

  /// What the frontmost application says about its focused window.
  void hint(std::string_view notation) { application.addWindows(notation); }

  FakeDesktop desktop;
  FakeAccessibilityInterface application;
  FixedWallClock wallClock;
  FocusedAccessibilityWindowHintReader hintReader{application, application.uptime()};
  FrontmostContextCaptureTargetResolver resolver{desktop, desktop, hintReader, wallClock, {ourselves, "us"}};
};

TEST_F(TargetResolver, freezesTheFocusedWindowOfTheFrontmostApplication) {
  auto inbox = window(2, mail, {10, 20, 800, 600}, "In\nbox");
  inbox.equivalentBounds = {{9, 0, 802, 621}};
  desktop.windows = {window(1, mail, {0, 0, 300, 200}, "Compose"), inbox};
  hint("window 'Inbox' number=2");
  const FrozenContextCaptureTarget expected{.processIdentifier = mail,
                                            .applicationName = "Mail",
                                            .bundleIdentifier = "org.example.Mail",
                                            .windowID = 2,
                                            .windowFrame = {10, 20, 800, 600},
                                            .windowTitle = "In box",
                                            .frozenAt = wallClock.present,
                                            .equivalentFrames = {{9, 0, 802, 621}}};
  EXPECT_EQ(resolve(), expected);
}

TEST_F(TargetResolver, recognisesTheFocusedWindowWithoutItsNumber) {
  desktop.windows = {window(1, mail, {0, 0, 300, 200}, "Compose"), window(2, mail, {0, 0, 300, 200}, "Inbox - Mail"),
                     window(3, mail, {5, 5, 640, 480}, "Address book")};
  hint("window 'Inbox' frame=1,1,301,199");
  EXPECT_EQ(resolvedWindow(), 2U) << "two have the frame, one the title";

  const AccessibilityElement focused{2};
  auto& attributes = application[focused].attributes;
  attributes["AXPosition"] = ArtifactPoint{5, 5};
  attributes["AXSize"] = ArtifactSize{640, 482};
  EXPECT_EQ(resolvedWindow(), 3U) << "one has the frame, whatever its title";
  attributes["AXPosition"] = ArtifactPoint{0, 0};
  attributes["AXTitle"] = std::string("Address book");
  EXPECT_EQ(resolvedWindow(), 3U) << "counted from another origin";
  attributes["AXTitle"] = std::string("Something else");
  EXPECT_EQ(resolvedWindow(), 1U) << "nothing agrees: the frontmost";
}

TEST_F(TargetResolver, withoutAHintSubstantialWindowsComeFirst) {
  auto faint = window(1, mail, {0, 0, 500, 500});
  faint.alpha = 0.01;
  auto panel = window(2, mail, {0, 0, 500, 500});
  panel.layer = 3;
  auto secret = window(3, mail, {0, 0, 500, 500});
  secret.sharingState = WindowSharingState::none;
  auto hidden = window(4, mail, {0, 0, 500, 500});
  hidden.isOnScreen = false;
  const auto tiny = window(5, mail, {0, 0, 23.9, 500});
  const auto small = window(6, mail, {0, 0, 24, 24});
  const auto flat = window(7, mail, {0, 0, 500, 63});
  const auto ordinary = window(8, mail, {0, 0, 100, 100});
  desktop.windows = {faint, panel, secret, hidden, tiny, small, flat, ordinary};
  EXPECT_EQ(resolvedWindow(), 8U);
  desktop.windows.pop_back();
  EXPECT_EQ(resolvedWindow(), 6U) << "the frontmost that is not too small";
}

TEST_F(TargetResolver, anApplicationThatDoesNotAnswerAtOnceGivesNoHint) {
  desktop.windows = {window(1, mail, {0, 0, 300, 200}), window(2, mail, {0, 0, 300, 200})};
  hint("window 'Inbox' number=2");
  application.onCall = [&](const FakeCall&) -> std::optional<AccessibilityErrorCode> {
    application.uptimeNanoseconds += 100'000'000;
    return std::nullopt;
  };
  EXPECT_EQ(resolvedWindow(), 1U);
  application.onCall = nullptr;
  EXPECT_EQ(resolvedWindow(), 2U);
  std::vector<std::int64_t> timeouts;
  for (const auto& call : application.calls) {
    if (call.operation == "setMessagingTimeout") timeouts.push_back(call.count);
  }
  EXPECT_EQ(timeouts, (std::vector<std::int64_t>{50, 50, 50}));
  application.isTrusted = false;
  EXPECT_EQ(resolvedWindow(), 1U);
}

TEST_F(TargetResolver, fallsBackToTheFrontmostWindowThatMayBeCaptured) {
  desktop.applications.push_back({700, "Dock", std::nullopt, false});
  desktop.applications.push_back({701, "Our helper", "us", true});
  desktop.windows = {window(1, ourselves, {0, 0, 300, 200}), window(2, 700, {0, 0, 300, 200}),
                     window(3, 701, {0, 0, 300, 200}),       window(4, 9999, {0, 0, 300, 200}),
                     window(5, editor, {0, 0, 90, 90}),      window(6, editor, {0, 0, 300, 200})};
  for (const std::optional<std::int32_t> frontmost : {std::optional<std::int32_t>(ourselves), {700}, {mail}, {}}) {
    desktop.frontmost = frontmost;
    EXPECT_EQ(resolvedWindow(), 6U);
  }
}

TEST_F(TargetResolver, saysThatThereIsNothingToCapture) {
  desktop.windows = {window(1, ourselves, {0, 0, 300, 200})};
  EXPECT_THROW(resolve(), ContextCaptureServiceError);
  desktop.isListAvailable = false;
  try {
    resolve();
    FAIL();
  } catch (const ContextCaptureServiceError& error) {
    EXPECT_EQ(error, ContextCaptureServiceError(ContextCaptureServiceError::NoFrontmostNonQuilloApplication{}));
    EXPECT_EQ(error.errorDescription(), "Quillo could not find a frontmost application window to capture.");
  }
}

TEST_F(TargetResolver, findsAWindowByItsNumber) {
  desktop.windows = {window(3, ourselves, {0, 0, 300, 200}), window(4, 9999, {0, 0, 10, 10})};
  EXPECT_EQ(resolver.resolveWindow(3).applicationName, "Us");
  EXPECT_EQ(resolver.resolveWindow(4).applicationName, "Application");
  try {
    resolver.resolveWindow(5);
    FAIL();
  } catch (const UnknownWindowError& error) {
    EXPECT_EQ(error.errorDescription(), "No window with the number 5 is on the screen.");
  }
}

}  // namespace
}  // namespace quillo::test
