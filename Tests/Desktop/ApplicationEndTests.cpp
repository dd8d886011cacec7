// The application's end, whoever brings it about: no edit is lost.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

#include "ApplicationFixture.h"
#include "OtherDisplay.h"
#include "Tests/Support/GoldenFile.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

class ApplicationEnd : public Application {
 protected:
  void SetUp() override {
    Application::SetUp();
    if (!IsSkipped()) addCapture();
  }

  /// Types and lets the program read the keys: those that the display still holds are nobody's to save. It does not
  /// take so long that they are saved by themselves.
  static void typeInTime(const std::string& text, const Environment& display = {}) {
    type(text, display);
    std::this_thread::sleep_for(std::chrono::milliseconds(250));
  }

  /// Waits until the application has ended; its exit status.
  static int awaitEnd(RunningProgram& application) {
    EXPECT_TRUE(eventually([&] { return application.exitStatus().has_value(); }));
    return application.exitStatus().value_or(-1);
  }
};

TEST_F(ApplicationEnd, aRequestToEndSavesTheEditThatWasJustTyped) {
  const auto application = start();
  beginTyping(ApplicationEnd::library);
  typeInTime(", and last");
  application->signal(SIGTERM);
  EXPECT_EQ(awaitEnd(*application), 0);
  EXPECT_THAT(library(), HasSubstr("First, and last"));
}

TEST_F(ApplicationEnd, whileAnEditIsBeingWrittenWaitsForItAndForWhatWasTypedMeanwhile) {
  const auto application = start({}, {"LD_PRELOAD=" QUILLO_SLOW_DISK});
  beginTyping(ApplicationEnd::library);
  const auto fileCount = [] { return std::distance(std::filesystem::recursive_directory_iterator(libraryPath()), {}); };
  const auto before = fileCount();
  type(", then more");
  ASSERT_TRUE(eventually([&] { return fileCount() > before; })) << "no write has begun";
  typeInTime(", and last");
  application->signal(SIGTERM);
  EXPECT_EQ(awaitEnd(*application), 0);
  EXPECT_THAT(library(), HasSubstr("First, then more, and last"));
}

// The session manager kills whoever has not answered, and takes the answer for the end of saving.
TEST_F(ApplicationEnd, theSessionsEndWaitsForTheEdit) {
  const std::string heard = writeFile("session-manager", "");
  const RunningProgram manager({"sh", "-c", R"(exec "$0" >"$1")", QUILLO_SESSION_MANAGER_PROGRAM, heard});
  ASSERT_TRUE(eventually([&] { return readFile(heard).ends_with("\n"); }));
  const std::string address = readFile(heard).substr(0, readFile(heard).find('\n'));
  const auto application = start({}, {"SESSION_MANAGER=" + address});
  beginTyping(ApplicationEnd::library);
  ASSERT_TRUE(readFile(heard).ends_with("\nsaved\n")) << readFile(heard);
  const std::string before = readFile(heard);
  typeInTime(", and last");
  manager.signal(SIGUSR1);
  ASSERT_TRUE(eventually([&] { return readFile(heard) == before + "saved\n"; })) << readFile(heard);
  EXPECT_THAT(library(), HasSubstr("First, and last"));
  // A session may go on after all.
  press("ctrl+f");
  press("Return");
  press("Delete");
  EXPECT_TRUE(eventually([] { return library().empty(); }));
}

TEST_F(ApplicationEnd, aLostDisplaySavesTheEdit) {
  const OtherDisplay display;
  const auto application = start({}, display.environment());
  beginTyping(ApplicationEnd::library, display.environment());
  typeInTime(", and last", display.environment());
  display.end();
  EXPECT_EQ(awaitEnd(*application), 1);
  EXPECT_THAT(library(), HasSubstr("First, and last"));
}

TEST_F(ApplicationEnd, aLostBusSavesTheEdit) {
  const std::string address = "unix:path=" + std::string(getenv("XDG_RUNTIME_DIR")) + "/other-bus";
  const RunningProgram bus({"dbus-daemon", "--session", "--nofork", "--address=" + address});
  const Environment environment = {"DBUS_SESSION_BUS_ADDRESS=" + address};
  ASSERT_TRUE(eventually([&] {
    return runProgram({"dbus-send", "--bus=" + address, "--print-reply", "--dest=org.freedesktop.DBus", "/",
                       "org.freedesktop.DBus.ListNames"})
               .exitStatus == 0;
  }));
  const auto application = start({}, environment);
  beginTyping(ApplicationEnd::library, environment);
  typeInTime(", and last");
  bus.signal(SIGKILL);
  EXPECT_EQ(awaitEnd(*application), 0);
  EXPECT_THAT(library(), HasSubstr("First, and last"));
}

}  // namespace
}  // namespace quillo::test
