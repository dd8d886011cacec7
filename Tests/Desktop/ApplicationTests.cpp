// The application itself, driven as a user does: by keys, by its menu over the bus, by starting it again.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>

#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

// The toolkit is not instrumented: its own synchronisation would be reported as races.
#if __has_feature(thread_sanitizer)
constexpr bool canRunToolkit = false;
#else
constexpr bool canRunToolkit = true;
#endif

const std::string trayHost = std::string(QUILLO_TEST_PROGRAMS) + "/tray-host.py";

/// The address sanitizer's strict checks of strings would stop in the keyboard library, which copies texts with their
/// length from replies that end there.
Arguments commandLine(const Arguments& options) {
  Arguments arguments{"env", "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0", QUILLO_APP_PROGRAM};
  arguments.insert(arguments.end(), options.begin(), options.end());
  return arguments;
}

std::unique_ptr<RunningProgram> start(const Arguments& options = {}) {
  return std::make_unique<RunningProgram>(commandLine(options));
}

/// Starts it while another runs.
int secondStart(const Arguments& options = {}) {
  return runProgram(commandLine(options)).exitStatus;
}

bool isRunning() {
  return runProgram({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                     "org.freedesktop.DBus.NameHasOwner", "org.quillo.Quillo"})
             .output == "(true,)\n";
}

std::string menu() {
  return runProgram({trayHost, "menu"}).output;
}

bool choose(const std::string& item) {
  return runProgram({trayHost, "choose", item}).exitStatus == 0;
}

std::string library() {
  return runQuillo({"list"}).output;
}

bool hasWindow(const std::string& name) {
  return runProgram({"xdotool", "search", "--onlyvisible", "--name", "^" + name + "$"}).exitStatus == 0;
}

void press(const std::string& keys) {
  runProgram({"xdotool", "key", keys});
}

/// The first run's guide is another test's.
void completeGuide() {
  const std::string folder = std::string(getenv("XDG_CONFIG_HOME")) + "/Quillo";
  runProgram({"mkdir", "-p", folder});
  runProgram({"sh", "-c", R"(echo '{"schemaVersion": 1, "values": {"onboardingVersion": 1}}' > "$0")",
              folder + "/preferences.json"});
}

class Application : public testing::Test {
 protected:
  void SetUp() override {
    if (!canRunToolkit) GTEST_SKIP() << "the toolkit is not instrumented";
    completeGuide();
  }
};

TEST_F(Application, capturesTheWindowInFrontByShortcutAndKeepsWhatIsWrittenAboutIt) {
  auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "without a tray the library is its face";
  const RunningProgram editor({"mousepad", writeFile("letter.txt", "Dear reader")});
  readWindowHolding(editor, {"Dear reader"});
  press("ctrl+alt+super+c");
  ASSERT_TRUE(eventually([] { return library().find("Mousepad") != std::string::npos; }));

  // Another start opens the library of the first and ends.
  EXPECT_EQ(0, secondStart());
  ASSERT_TRUE(
      eventually([] { return runProgram({"xdotool", "getactivewindow", "getwindowname"}).output == "Quillo\n"; }));
  press("F2");
  runProgram({"xdotool", "type", "A letter"});
  press("Tab");
  runProgram({"xdotool", "type", "Answer it"});
  ASSERT_TRUE(eventually([] {
    const std::string text = runProgram({"sh", "-c", "cat \"$XDG_DATA_HOME\"/Quillo/Artifacts/*/manifest.json"}).output;
    return text.find("A letter") != std::string::npos && text.find("Answer it") != std::string::npos;
  }));
  application->signal(SIGKILL);
  EXPECT_THAT(library(), HasSubstr("A letter"));
}

TEST_F(Application, theMenuActsOnTheWindowTheUserCameFromAndHostsMayComeAndGo) {
  auto host = std::make_unique<RunningProgram>(Arguments{trayHost, "serve"});
  ASSERT_TRUE(eventually([] {
    return runProgram({"gdbus", "introspect", "--session", "--dest", "org.kde.StatusNotifierWatcher", "--object-path",
                       "/StatusNotifierWatcher"})
               .exitStatus == 0;
  }));
  const auto application = start({"--background"});
  const RunningProgram editor({"mousepad", writeFile("note.txt", "Some note")});
  readWindowHolding(editor, {"Some note"});
  ASSERT_TRUE(eventually([] { return menu().find("[-] Ready") != std::string::npos; }));
  EXPECT_FALSE(hasWindow("Quillo"));
  EXPECT_THAT(menu(), StartsWith("[-] Quillo\n----\n[x] Capture Frontmost Window  ⌃⌥⌘C\n"
                                 "[-] Paste Selected Capture  ⌃⌥⌘V\n----\n"));
  ASSERT_TRUE(choose("Capture Frontmost Window"));
  ASSERT_TRUE(eventually([] { return library().find("note.txt") != std::string::npos; }));
  ASSERT_TRUE(eventually([] { return menu().find("[-] Selected: ") != std::string::npos; }));
  EXPECT_THAT(menu(), HasSubstr("[x] Paste Selected Capture"));

  host.reset();
  EXPECT_TRUE(eventually([] { return hasWindow("Quillo"); })) << "no icon is left";
  host = std::make_unique<RunningProgram>(Arguments{trayHost, "serve"});
  ASSERT_TRUE(eventually([] { return menu().find("Quit Quillo") != std::string::npos; }));
  ASSERT_TRUE(choose("Quit Quillo"));
  EXPECT_TRUE(eventually([] { return !isRunning(); }));
}

TEST_F(Application, aRequestToEndSavesTheEditThatWasJustTyped) {
  const auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); }));
  const RunningProgram editor({"mousepad", writeFile("draft.txt", "A draft")});
  readWindowHolding(editor, {"A draft"});
  press("ctrl+alt+super+c");
  ASSERT_TRUE(eventually([] { return library().find("Mousepad") != std::string::npos; }));
  EXPECT_EQ(0, secondStart());
  ASSERT_TRUE(
      eventually([] { return runProgram({"xdotool", "getactivewindow", "getwindowname"}).output == "Quillo\n"; }));
  press("F2");
  runProgram({"xdotool", "type", "--delay", "0", "Typed last"});
  application->signal(SIGTERM);
  EXPECT_TRUE(eventually([] { return !isRunning(); }));
  EXPECT_THAT(library(), HasSubstr("Typed last"));
}

}  // namespace
}  // namespace quillo::test
