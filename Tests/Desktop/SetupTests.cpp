// The settings and the first run's guide, driven by keys.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "ApplicationFixture.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"
#include "QuilloLinux/Keyboard/X11HotKeys.h"
#include "Tests/Support/ManualLoop.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

constexpr const char* guide = "Welcome to Quillo";
constexpr const char* settings = "Setup & Shortcuts";
constexpr const char* practice = "A Letter to Practise With";

class Setup : public Application {
 protected:
  static std::string preferencesPath() { return std::string(getenv("XDG_CONFIG_HOME")) + "/Quillo/preferences.json"; }
  static std::string preferences() { return runProgram({"cat", preferencesPath()}).output; }
  static bool isInFront(const std::string& name) {
    return eventually([&] { return activeWindow() == name + "\n"; });
  }
  /// Starts the application in the background and opens its settings by the menu.
  std::unique_ptr<RunningProgram> startWithSettings() {
    host_ = startTrayHost();
    auto application = start({"--background"});
    EXPECT_TRUE(eventually([] { return menu().find("Setup & Shortcuts…") != std::string::npos; }));
    EXPECT_TRUE(choose("Setup & Shortcuts…"));
    EXPECT_TRUE(isInFront(settings));
    return application;
  }
  static void bringToFront(const std::string& name) {
    runProgram({"xdotool", "search", "--onlyvisible", "--name", "^" + name + "$", "windowactivate", "--sync"});
  }
  /// Whether the program's front window comes to say all this.
  static bool says(const RunningProgram& application, const std::vector<std::string>& texts) {
    const std::string all = allTextOf(readWindowHolding(application, texts));
    return std::ranges::all_of(texts, [&](const std::string& text) { return all.find(text) != std::string::npos; });
  }
  /// The roles of what can be operated in the front window and has no name there for a screen reader.
  static std::vector<std::string> unnamedControls(const RunningProgram& application) {
    std::vector<std::string> roles;
    const AccessibilitySnapshot snapshot = readWindow(awaitWindow(application));
    EXPECT_NE(findNode(snapshot, "AXButton"), nullptr);
    for (const AccessibilityNode& node : snapshot.nodes) {
      const bool isControl = node.role == "AXButton" || node.role == "AXCheckBox" || node.role == "AXTextArea" ||
                             node.role == "AXTextField" || node.role == "AXImage";
      if (isControl && textAttribute(node, "AXTitle").empty() && textAttribute(node, "AXLabel").empty())
        roles.push_back(node.role);
    }
    return roles;
  }

 private:
  std::unique_ptr<RunningProgram> host_;
};

TEST_F(Setup, theGuideLeadsToACaptureAndAPaste) {
#if __has_feature(thread_sanitizer)
  GTEST_SKIP() << "the sanitizer's own runtime fails where the toolkit starts another process";
#endif
  runProgram({"rm", preferencesPath()});
  const auto application = start({"--background"});
  ASSERT_TRUE(isInFront(guide));
  EXPECT_THAT(unnamedControls(*application), testing::IsEmpty());
  press("Return");
  ASSERT_TRUE(says(*application, {"Two shortcuts are all you need", "Both shortcuts are ready."}));
  press("Return");
  ASSERT_TRUE(says(*application, {"Capture a window", "The practice window is not open."}));
  press("Return");
  EXPECT_TRUE(hasWindow(guide)) << "there is no going on before a capture";
  press("space");
  ASSERT_TRUE(isInFront(practice));
  press("ctrl+alt+super+c");
  ASSERT_TRUE(eventually([] { return library().find(practice) != std::string::npos; }));
  bringToFront(practice);
  press("ctrl+alt+super+v");
  ASSERT_TRUE(isInFront(guide)) << "it comes back when the paste has arrived";
  ASSERT_TRUE(says(*application, {"characters have arrived."}));
  EXPECT_THAT(preferences(), testing::Not(HasSubstr("onboardingVersion")));
  press("Return");
  EXPECT_TRUE(eventually([] { return preferences().find("\"onboardingVersion\": 1") != std::string::npos; }));
  EXPECT_TRUE(eventually([] { return !hasWindow(guide) && !hasWindow(practice); }));
}

TEST_F(Setup, theGuideCanBeSkippedAndIsOpenedAgain) {
  runProgram({"rm", preferencesPath()});
  const auto host = startTrayHost();
  const auto application = start();
  ASSERT_TRUE(isInFront(guide));
  EXPECT_FALSE(hasWindow("Quillo")) << "the library would cover it";
  press("alt+s");
  ASSERT_TRUE(eventually([] { return !hasWindow(guide) && hasWindow("Quillo"); }));
  ASSERT_TRUE(choose("Finish Setup…"));
  EXPECT_TRUE(isInFront(guide));
}

TEST_F(Setup, aShortcutIsRecordedAndWhatCannotBeOneIsSaid) {
  const auto application = startWithSettings();
  press("alt+f");
  ASSERT_TRUE(says(*application, {"Type the combination…"}));
  press("ctrl+shift+k");
  EXPECT_TRUE(says(*application, {"Hold Control, Option, or Command and press another key."}));
  press("ctrl+alt+d");
  EXPECT_TRUE(says(*application, {"Keyboard shortcuts updated", "⌃⌥D", "Control + Alt + D"}));
  EXPECT_THAT(preferences(), HasSubstr(R"("keyLabel":"D")"));
  press("alt+p");
  ASSERT_TRUE(says(*application, {"Type the combination…"}));
  press("ctrl+alt+d");
  EXPECT_TRUE(says(*application, {"Capture and paste need different shortcuts.", "⌃⌥⌘V"}));
  press("alt+p");
  ASSERT_TRUE(says(*application, {"Type the combination…"}));
  press("Escape");
  EXPECT_TRUE(says(*application, {"⌃⌥⌘V"}));
  EXPECT_TRUE(hasWindow(settings)) << "Escape ends the recording, not the window";
  press("Escape");
  ASSERT_TRUE(eventually([] { return !hasWindow(settings); }));
  ASSERT_TRUE(choose("Setup & Shortcuts…"));
  EXPECT_TRUE(isInFront(settings)) << "as often as one likes";
}

TEST_F(Setup, aShortcutThatAnotherProgramHasIsNamed) {
  ManualLoop loop;
  X11HotKeys others(loop.executor());
  ASSERT_EQ(others.installHandler({.released = [](auto) {}, .lost = [](auto, auto) {}}), hotKeySucceeded);
  ASSERT_TRUE(others.registerHotKey(QuilloHotKeyConfiguration::defaults().paste, {.signature = 1, .id = 1}).reference);
  const auto application = startWithSettings();
  EXPECT_TRUE(says(*application, {"Quillo could not reserve the paste shortcut (OSStatus 10).",
                                  "free this one in the program that has it"}));
}

TEST_F(Setup, withoutADisplayItAnswersWhatNeedsNone) {
  const Environment none{"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  const FinishedProgram version = runProgram(commandLine({"--version"}), {}, none);
  EXPECT_EQ(version.exitStatus, 0);
  EXPECT_THAT(version.output, HasSubstr("Quillo"));
  const FinishedProgram started = runProgram(commandLine({}), {}, none);
  EXPECT_EQ(started.exitStatus, 1);
  EXPECT_EQ(started.error, "quillo-app: There is no display. Start Quillo inside a desktop session.\n");

  const Environment unreachable{"DISPLAY=:4321", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  EXPECT_THAT(runProgram(commandLine({"--version"}), {}, unreachable).output, HasSubstr("Quillo"));
  const FinishedProgram refused = runProgram(commandLine({}), {}, unreachable);
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_EQ(refused.error, "quillo-app: The display :4321 does not answer. Start Quillo inside a desktop session.\n");
}

TEST_F(Setup, startAtLoginWritesTheDesktopsEntry) {
  const std::string entry = std::string(getenv("XDG_CONFIG_HOME")) + "/autostart/org.quillo.Quillo.desktop";
  const auto application = startWithSettings();
  EXPECT_THAT(unnamedControls(*application), testing::IsEmpty());
  press("alt+s");
  EXPECT_TRUE(
      eventually([&] { return runProgram({"grep", "-q", "quillo-app.*--background", entry}).exitStatus == 0; }));
  EXPECT_TRUE(says(*application, {"This system has no system bus"})) << "and so nobody to ask for updates";
  press("alt+s");
  EXPECT_TRUE(eventually([&] { return runProgram({"test", "-e", entry}).exitStatus != 0; }));
}

}  // namespace
}  // namespace quillo::test
