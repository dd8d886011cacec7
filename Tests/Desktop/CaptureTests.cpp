// The whole capture where something goes wrong: with the window, with the desktop, with the library.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "OtherDisplay.h"
#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"
#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "QuilloLinux/Windows/X11WindowList.h"
#include "RunningProgram.h"
#include "TestWindow.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string numberOf(const Editor& editor) {
  return std::to_string(editor.window());
}

std::string newLibrary() {
  static int count = 0;
  const std::string path = std::string(std::getenv("HOME")) + "/library" + std::to_string(++count);
  fs::create_directory(path);
  return path;
}

/// Also what is hidden.
std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
  return names;
}

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

ApplicationIdentity nameless(const std::string& /*windowClass*/) {
  return {};
}

/// A capture of real windows whose steps a test takes one by one, so that something can happen between them.
class SteppedCapture {
 public:
  /// Throws what the resolver throws.
  FrozenContextCaptureTarget freeze(std::uint32_t windowID) {
    FocusedAccessibilityWindowHintReader hints(accessibility_);
    FrontmostContextCaptureTargetResolver resolver(windowList_, applications_, hints, wallClock_, {});
    FrozenContextCaptureTarget target = resolver.resolveWindow(windowID);
    images_->prepare(windowID);
    return target;
  }

  /// Throws ContextCaptureServiceError.
  ContextCaptureResult capture(const FrozenContextCaptureTarget& target,
                               ContextCaptureOperationDeadlines deadlines = {}) {
    ContextCaptureOperations operations;
    operations.permissionProvider = [this] {
      return ContextCapturePermissionState{
          .screenRecordingGranted = images_->isAllowed(),
          .accessibilityGranted = capturer_.isAccessGranted(AccessibilityTrustPrompt::silent)};
    };
    operations.screenshotOperation = [this](WindowCaptureTarget window) {
      return screenshots_.capture(std::move(window));
    };
    operations.accessibilityOperation = [this](WindowCaptureTarget window) {
      return capturer_.capture(clock_, accessibilityQueue_, std::move(window));
    };
    operations.secondLookOperation = [this](WindowCaptureTarget window) {
      return screenshots_.lookAgain(std::move(window));
    };
    ContextCaptureService service(std::move(operations), clock_, workers_.executor(), deadlines);
    return loop_.run([&] { return service.capture(target); });
  }

  /// The picture alone, for windows that are on no accessibility bus. Throws WindowScreenshotCaptureError.
  WindowScreenshotCapture takePicture(const FrozenContextCaptureTarget& target) {
    return loop_.run([&] { return screenshots_.capture(makeWindowCaptureTarget(target)); });
  }

 private:
  SystemWallClock wallClock_;
  SystemMonotonicClock clock_;
  AtspiAccessibilityInterface accessibility_;
  X11WindowList windowList_;
  X11RunningApplications applications_{nameless};
  std::shared_ptr<X11WindowImage> images_ = std::make_shared<X11WindowImage>(nameless);
  BlockingLoop loop_;
  AccessibilityContextCapturer capturer_{accessibility_, windowList_, wallClock_};
  SerialQueue screenshotQueue_{"screenshot"};
  SerialQueue accessibilityQueue_{"accessibility"};
  SerialQueue workers_{"capture"};
  FrontmostWindowScreenshotCapturer screenshots_{images_, clock_, screenshotQueue_};
};

TEST(Capture, windowThatClosesAfterFreezingIsNotReplacedByAnother) {
  SteppedCapture stepped;
  const TestWindow other({.title = "Another window of the same program"});
  TestWindow window({.title = "Closes"});
  ASSERT_TRUE(eventually([&] {
    try {
      stepped.takePicture(stepped.freeze(window.id()));
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }));
  const FrozenContextCaptureTarget target = stepped.freeze(window.id());
  window.destroy();
  try {
    stepped.takePicture(target);
    ADD_FAILURE() << "a picture of what?";
  } catch (const WindowScreenshotCaptureError& error) {
    EXPECT_EQ(error, WindowScreenshotCaptureError(WindowScreenshotCaptureError::FrozenWindowUnavailable{
                         target.windowID, target.processIdentifier, target.applicationName}));
  }
}

TEST(Capture, applicationThatDiesOrStopsAfterFreezingFailsTheCaptureInTime) {
  SteppedCapture stepped;
  {
    const Editor editor;
    const FrozenContextCaptureTarget target = stepped.freeze(editor.window());
    editor.program().signal(SIGSTOP);
    try {
      stepped.capture(target, {2, 1});
      ADD_FAILURE() << "a stopped program was read";
    } catch (const ContextCaptureServiceError& error) {
      EXPECT_EQ(error.errorDescription(), "Accessibility capture exceeded its 1-second safety deadline.");
    }
  }
  std::optional<FrozenContextCaptureTarget> target;
  {
    const Editor editor;
    target = stepped.freeze(editor.window());
  }
  // Which half is first to find out is chance.
  try {
    stepped.capture(*target);
    ADD_FAILURE() << "a dead program was read";
  } catch (const ContextCaptureServiceError& error) {
    EXPECT_THAT(error.errorDescription(), AnyOf(HasSubstr("is no longer available to ScreenCaptureKit."),
                                                HasSubstr("The Accessibility API could not connect to process"),
                                                HasSubstr("Accessibility could not resolve frozen window")));
  }
}

TEST(Capture, permissionsAreNamedWithWhatToDo) {
  const Editor editor;
  const std::string library = newLibrary();
  const FinishedProgram deaf = runQuillo({"--library", library, "capture", "--window", numberOf(editor)}, "",
                                         {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", "XDG_RUNTIME_DIR=/nowhere"});
  EXPECT_EQ(deaf.exitStatus, 1);
  EXPECT_EQ(deaf.output, "");
  EXPECT_EQ(deaf.error,
            "quillo: Quillo needs Accessibility permission before capturing.\n"
            "Enable Quillo in System Settings > Privacy & Security > Accessibility.\n");
  EXPECT_THAT(namesIn(library), ElementsAre());
}

TEST(Capture, displayWithoutCompositeCountsAsScreenRecordingDenied) {
  const OtherDisplay display("-extension Composite");
  const RunningProgram program({"env", display.environment()[0], "mousepad"});
  std::string window;
  ASSERT_TRUE(eventually([&] {
    window = firstLine(
        runProgram({"xdotool", "search", "--onlyvisible", "--class", "mousepad"}, "", display.environment()).output);
    return !window.empty();
  }));
  const std::string library = newLibrary();
  FinishedProgram finished;
  eventually([&] {
    finished = runQuillo({"--library", library, "capture", "--window", window}, "", display.environment());
    return finished.error.find("No window with the number") == std::string::npos;
  });
  EXPECT_EQ(finished.exitStatus, 1);
  EXPECT_EQ(firstLine(finished.error), "quillo: Quillo needs Screen Recording permission before capturing.");
  EXPECT_THAT(namesIn(library), ElementsAre());
}

TEST(Capture, interruptedAtAnyInstantLeavesNothingOrOneWholeArtifact) {
  const Editor editor;
  const std::string library = newLibrary();
  for (const char* seconds : {"0.02", "0.1", "0.15", "0.2", "0.25", "0.3", "0.35", "0.4", "0.5"}) {
    const FinishedProgram finished =
        runProgram({"timeout", "--foreground", "--preserve-status", "-s", "INT", seconds, QUILLO_PROGRAM, "--library",
                    library, "capture", "--window", numberOf(editor)});
    if (finished.exitStatus == 0) {
      EXPECT_THAT(namesIn(library), ElementsAre(firstLine(finished.output) + ".quillo")) << seconds;
      EXPECT_EQ(runQuillo({"--library", library, "check"}).exitStatus, 0) << seconds;
      for (const std::string& name : namesIn(library)) fs::remove_all(fs::path(library) / name);
    } else {
      EXPECT_EQ(finished.exitStatus, 130) << seconds;
      EXPECT_EQ(finished.output, "") << seconds;
      EXPECT_THAT(namesIn(library), ElementsAre()) << seconds;
    }
  }
}

TEST(Capture, windowResizedAfterFreezingIsCapturedInItsNewSizeWithAWarning) {
  SteppedCapture stepped;
  const Editor editor;
  for (const auto& [width, height] : {std::pair{900, 620}, {500, 300}}) {
    const FrozenContextCaptureTarget target = stepped.freeze(editor.window());
    runProgram({"xdotool", "windowsize", numberOf(editor), std::to_string(width), std::to_string(height)});
    const ContextCaptureResult result = stepped.capture(target);
    EXPECT_EQ(result.screenshot.pixelWidth, width);
    EXPECT_EQ(result.screenshot.pixelHeight, height);
    EXPECT_EQ(result.target, target);
    ASSERT_TRUE(result.source.windowFrame.has_value());
    EXPECT_EQ(result.source.windowFrame->width, width);
    EXPECT_THAT(encodeJson(result.accessibilitySnapshot, JsonStyle::compact), HasSubstr("Dear reader"));
    EXPECT_THAT(result.accessibilitySnapshot.warnings,
                testing::Contains(HasSubstr("The window's size changed while it was captured")));
  }
}

/// Runs lines in a mount namespace of their own, with `$quillo`, a library `$library` on a file system of its own,
/// and the number of an editor's window, `$window`.
class CaptureIntoMountedLibrary : public testing::Test {
 protected:
  void SetUp() override {
    if (runProgram({"unshare", "--mount", "true"}).exitStatus != 0) GTEST_SKIP() << "only root may mount a disk";
    editor_.emplace();
  }

  FinishedProgram run(const std::string& mountOptions, const std::string& lines) {
    return runProgram({"unshare", "--mount", "bash", "-c",
                       "quillo=$0; library=$1; window=$2; mount -t tmpfs -o mode=700" + mountOptions +
                           " tmpfs \"$library\" || exit 9\n" + lines,
                       QUILLO_PROGRAM, newLibrary(), numberOf(*editor_)});
  }

 private:
  std::optional<Editor> editor_;
};

TEST_F(CaptureIntoMountedLibrary, fullDiskIsNamedAndLeavesNoTrace) {
  const FinishedProgram finished = run(",size=8k", R"(
    "$quillo" --library "$library" capture --window "$window"; echo "status $?"
    ls -A "$library")");
  EXPECT_EQ(finished.output, "status 1\n");
  EXPECT_THAT(finished.error, StartsWith("quillo: Could not write \""));
  EXPECT_THAT(finished.error, HasSubstr("\": No space left on device\n"));
}

TEST_F(CaptureIntoMountedLibrary, readOnlyLibraryIsReadAndNotWritten) {
  const FinishedProgram finished = run("", R"(
    id=$("$quillo" --library "$library" capture --window "$window") || exit 8
    mount -o remount,ro "$library" || exit 9
    run() { "$quillo" --library "$library" "$@" 2>&1 | sed -e 's/"[^"]*"/"…"/g' -e "s/$id/ID/"; echo "$1: ${PIPESTATUS[0]}"; }
    run capture --window "$window"
    run edit "$id" --title New
    run trash "$id"
    run check
    ls -A "$library" | sed "s/$id/ID/"; ls -A "$library/$id.quillo")");
  EXPECT_EQ(finished.exitStatus, 0) << finished.error;
  EXPECT_THAT(finished.output,
              testing::MatchesRegex("quillo: Could not make \"…\": Read-only file system\ncapture: 1\n"
                                    "quillo: Could not write \"…\": Read-only file system\nedit: 1\n"
                                    "quillo: Artifact ID could not be moved to the Trash: [^\n]+\n"
                                    "trash: 1\nID\tok\ncheck: 0\nID.quillo\n"
                                    "evidence.json\nmanifest.json\nobservation.json\nscreenshot.png\n"));
}

TEST_F(CaptureIntoMountedLibrary, libraryOnAnotherFileSystemWorks) {
  const FinishedProgram finished = run("", R"(
    id=$("$quillo" --library "$library" capture --window "$window") || exit 8
    "$quillo" --library "$library" edit "$id" --title New || exit 7
    "$quillo" --library "$library" list | cut -f4
    moved=$("$quillo" --library "$library" trash "$id" 2>"$library/error"); status=$?
    if [ $status = 0 ]; then [ -e "$moved/manifest.json" ] && ! [ -e "$library/$id.quillo" ] && echo moved
    else grep -q "^quillo: Artifact $id could not be moved to the Trash: ." "$library/error" &&
      [ -e "$library/$id.quillo" ] && echo kept; fi)");
  EXPECT_EQ(finished.exitStatus, 0) << finished.error;
  EXPECT_THAT(finished.output, AnyOf("New\nmoved\n", "New\nkept\n"));
}

}  // namespace
}  // namespace quillo::test
