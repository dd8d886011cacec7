// What the command says where a capture is not possible: one clear line, and the status of a failure.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

void expectFailure(const FinishedProgram& finished, const std::string& message) {
  EXPECT_EQ(finished.exitStatus, 1);
  EXPECT_EQ(finished.output, "");
  EXPECT_EQ(finished.error.substr(0, finished.error.find('\n')), "quillo: " + message);
}

TEST(CommandErrors, snapshotSaysWhatIsMissing) {
  expectFailure(runQuillo({"snapshot"}, "", {"DISPLAY"}),
                "Quillo could not find a frontmost application window to capture.");
  expectFailure(runQuillo({"snapshot", "--window", "1"}, "", {"DISPLAY=:4999"}),
                "The macOS window server did not return a list of visible windows.");
  expectFailure(runQuillo({"snapshot"}), "Quillo could not find a frontmost application window to capture.");
  expectFailure(runQuillo({"snapshot", "--window", "77"}), "No window with the number 77 is on the screen.");
  EXPECT_EQ(runQuillo({"snapshot", "--window", "none"}).exitStatus, 2);
  EXPECT_EQ(runQuillo({"snapshots"}).exitStatus, 2);
}

TEST(CommandErrors, snapshotNeedsAccessibility) {
  const RunningProgram editor({"mousepad"});
  const std::string window = std::to_string(awaitWindow(editor).windowID);
  const std::string denied = "Quillo needs Accessibility access in System Settings to capture application context.";
  expectFailure(runQuillo({"snapshot", "--window", window}, "",
                          {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", "XDG_RUNTIME_DIR=/nowhere"}),
                denied);
  const FinishedProgram switchedOff =
      runProgram({"gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus", "--method",
                  "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<false>"});
  ASSERT_EQ(switchedOff.exitStatus, 0) << switchedOff.error;
  expectFailure(runQuillo({"snapshot", "--window", window}), denied);

  const FinishedProgram doctor = runQuillo({"doctor"});
  EXPECT_EQ(doctor.exitStatus, 1);
  EXPECT_THAT(doctor.output, HasSubstr("missing Accessibility bus: Accessibility is switched off in this session."));
}

TEST(CommandErrors, filtersRefuseWhatIsNoCapture) {
  expectFailure(runQuillo({"observe"}, "{\"nodes\": ["), "The JSON is malformed at byte 11: the text ends too early");
  expectFailure(runQuillo({"observe"}, "{}"), "The member \"capturedAt\" is missing at $.");
  expectFailure(runQuillo({"render", "/nowhere/at\nall"}), "/nowhere/at all: No such file or directory");
  EXPECT_EQ(runQuillo({"render"}, std::string("\xff\xfe")).exitStatus, 1);
}

TEST(CommandErrors, outputThatCannotBeWrittenIsAFailure) {
  const std::string snapshot = "/dev/full";
  const FinishedProgram finished = runProgram({"bash", "-c", "\"$0\" --version >/dev/full", QUILLO_PROGRAM});
  EXPECT_EQ(finished.exitStatus, 1);
  EXPECT_EQ(finished.error, "quillo: The output could not be written: No space left on device\n");
}

}  // namespace
}  // namespace quillo::test
