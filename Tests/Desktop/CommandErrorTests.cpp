// What the command says where a capture is not possible: one clear line, and the status of a failure.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <future>
#include <string>
#include <utility>

#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::Not;

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
  const Editor editor;
  const std::string window = std::to_string(editor.window());
  const std::string denied = "Quillo needs Accessibility access in System Settings to capture application context.";
  expectFailure(runQuillo({"snapshot", "--window", window}, "",
                          {"DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere", "XDG_RUNTIME_DIR=/nowhere"}),
                denied);
  const auto switchTo = [](const char* state) {
    return runProgram({"gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path", "/org/a11y/bus",
                       "--method", "org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", state});
  };
  ASSERT_EQ(switchTo("<false>").exitStatus, 0);
  expectFailure(runQuillo({"snapshot", "--window", window}), denied);

  const FinishedProgram doctor = runQuillo({"doctor"});
  EXPECT_EQ(doctor.exitStatus, 1);
  EXPECT_THAT(doctor.output, HasSubstr("missing Accessibility bus: Accessibility is switched off in this session."));
  EXPECT_EQ(switchTo("<true>").exitStatus, 0);
}

/// A bus or display that is stopped: the system takes connections in its name, and nobody ever answers.
class SilentService {
 public:
  SilentService() : path_(std::string(std::getenv("XDG_RUNTIME_DIR")) + "/silent"), listener_(makeListener(path_)) {}
  SilentService(const SilentService&) = delete;
  SilentService& operator=(const SilentService&) = delete;
  ~SilentService() { ::close(listener_); }
  std::string busAddress() const { return "unix:path=" + path_; }

 private:
  static int makeListener(const std::string& path) {
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    EXPECT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener, 64), 0);
    return listener;
  }

  std::string path_;
  int listener_;
};

TEST(CommandErrors, whatDoesNotAnswerIsGivenUpAtItsDeadline) {
  const SilentService silent;
  const Editor editor;
  const std::string window = std::to_string(editor.window());

  const std::vector<std::string> sessionBus = {"DBUS_SESSION_BUS_ADDRESS=" + silent.busAddress()};
  const FinishedProgram noSession = runQuillo({"snapshot", "--window", window}, "", sessionBus);
  expectFailure(noSession, "Quillo needs Accessibility access in System Settings to capture application context.");
  EXPECT_LT(noSession.seconds, 4);
  const FinishedProgram doctor = runQuillo({"doctor"}, "", sessionBus);
  EXPECT_EQ(doctor.exitStatus, 1);
  EXPECT_THAT(doctor.output, HasSubstr("missing Accessibility bus: There is no session bus"));
  EXPECT_LT(doctor.seconds, 4);

  // Side by side, because each takes the whole deadline. The stopped application is found on the bus, the stopped bus
  // is not asked for it.
  editor.program().signal(SIGSTOP);
  constexpr double deadline = 15;
  const std::string timedOut = "Accessibility capture exceeded its 15-second safety deadline.";
  auto onSilentBus = std::async(std::launch::async, [&] {
    return runProgram(
        {"env", "AT_SPI_BUS_ADDRESS=" + silent.busAddress(), QUILLO_PROGRAM, "snapshot", "--window", window});
  });
  const FinishedProgram ofStoppedProgram = runQuillo({"snapshot", "--window", window});
  for (const FinishedProgram& finished : {onSilentBus.get(), ofStoppedProgram}) {
    expectFailure(finished, timedOut);
    EXPECT_NEAR(finished.seconds, deadline, 0.2);
  }
}

TEST(CommandErrors, doctorNamesApplicationsThatAreNotOnTheBus) {
  const Editor editor;
  const FinishedProgram before = runQuillo({"doctor"});
  EXPECT_EQ(before.exitStatus, 0) << before.output;

  const RunningProgram deaf({"env", "NO_AT_BRIDGE=1", "gtk3-widget-factory"});
  awaitWindow(deaf);
  const FinishedProgram doctor = runQuillo({"doctor"});
  EXPECT_EQ(doctor.exitStatus, 1);
  EXPECT_THAT(doctor.output, HasSubstr("missing Application: process " + std::to_string(deaf.pid()) + " ("));
  EXPECT_THAT(doctor.output, Not(HasSubstr(std::to_string(editor.program().pid()) + " (")));
}

TEST(CommandErrors, filtersRefuseWhatIsNoCapture) {
  expectFailure(runQuillo({"observe"}, "{\"nodes\": ["), "The JSON is malformed at byte 11: the text ends too early");
  expectFailure(runQuillo({"observe"}, "{}"), "The member \"capturedAt\" is missing at $.");
  expectFailure(runQuillo({"render"}, std::string(5000, '[')),
                "The JSON is nested deeper than 1024 levels at byte 1024.");
  expectFailure(runQuillo({"observe", "/dev"}), "/dev: Is a directory");
  expectFailure(runQuillo({"render", "/nowhere/at\nall"}), "/nowhere/at all: No such file or directory");
  EXPECT_EQ(runQuillo({"render"}, std::string("\xff\xfe")).exitStatus, 1);
}

TEST(CommandErrors, outputThatCannotBeWrittenIsAFailure) {
  for (const auto& [command, reason] : {std::pair("\"$0\" --version >/dev/full", "No space left on device"),
                                        {"exec 7> >(true); wait $!; \"$0\" --version >&7", "Broken pipe"},
                                        {"\"$0\" --version >&-", "Bad file descriptor"}}) {
    const FinishedProgram finished = runProgram({"bash", "-c", command, QUILLO_PROGRAM});
    EXPECT_EQ(finished.exitStatus, 1);
    EXPECT_EQ(finished.error, std::string("quillo: The output could not be written: ") + reason + "\n");
  }
  EXPECT_EQ(runProgram({"bash", "-c", "\"$0\" observe /nowhere 2>&-", QUILLO_PROGRAM}).exitStatus, 1);
}

TEST(CommandErrors, interruptedCaptureEndsAtOnceAndSaysNothing) {
  const Editor editor;
  const std::string window = std::to_string(editor.window());
  editor.program().signal(SIGSTOP);
  for (const char* signal : {"INT", "TERM"}) {
    // In the foreground it signals once; otherwise it signals its group as well, and the second signal kills.
    const FinishedProgram finished = runProgram({"timeout", "--foreground", "--preserve-status", "-s", signal, "0.3",
                                                 QUILLO_PROGRAM, "snapshot", "--window", window});
    EXPECT_EQ(finished.exitStatus, 130) << signal;
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.error, "");
    EXPECT_LT(finished.seconds, 1.5) << signal;
  }
}

}  // namespace
}  // namespace quillo::test
