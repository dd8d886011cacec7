#include "ApplicationFixture.h"

#include <cstdlib>

#include "ArtifactFixtures.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"

namespace quillo::test {
namespace {

const std::string trayHost = std::string(QUILLO_TEST_PROGRAMS) + "/tray-host.py";

}  // namespace

void Application::SetUp() {
  const std::string folder = std::string(getenv("XDG_CONFIG_HOME")) + "/Quillo";
  runProgram({"mkdir", "-p", folder});
  runProgram({"sh", "-c", R"(echo '{"schemaVersion": 1, "values": {"onboardingVersion": 1}}' > "$0")",
              folder + "/preferences.json"});
}

Arguments Application::commandLine(const Arguments& options, const Environment& environment) {
  // The address sanitizer's strict checks of strings would stop in the keyboard library, which copies texts with their
  // length from replies that end there.
  Arguments arguments{"env", "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=0"};
  arguments.insert(arguments.end(), environment.begin(), environment.end());
  arguments.emplace_back(QUILLO_APP_PROGRAM);
  arguments.insert(arguments.end(), options.begin(), options.end());
  return arguments;
}

std::unique_ptr<RunningProgram> Application::start(const Arguments& options, const Environment& environment) {
  return std::make_unique<RunningProgram>(commandLine(options, environment));
}

int Application::secondStart(const Arguments& options, const Environment& environment) {
  return runProgram(commandLine(options, environment)).exitStatus;
}

bool Application::isRunning() {
  return runProgram({"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/", "--method",
                     "org.freedesktop.DBus.NameHasOwner", "org.quillo.Quillo"})
             .output == "(true,)\n";
}

std::unique_ptr<RunningProgram> Application::startTrayHost() {
  auto host = std::make_unique<RunningProgram>(Arguments{trayHost, "serve"});
  const bool isThere = eventually([] {
    return runProgram({"gdbus", "introspect", "--session", "--dest", "org.kde.StatusNotifierWatcher", "--object-path",
                       "/StatusNotifierWatcher"})
               .exitStatus == 0;
  });
  EXPECT_TRUE(isThere);
  return host;
}

std::string Application::menu() {
  return runProgram({trayHost, "menu"}).output;
}

bool Application::choose(const std::string& item) {
  return runProgram({trayHost, "choose", item}).exitStatus == 0;
}

bool Application::hasWindow(const std::string& name, const Environment& display) {
  return runProgram({"xdotool", "search", "--onlyvisible", "--name", "^" + name + "$"}, {}, display).exitStatus == 0;
}

std::string Application::activeWindow(const Environment& display) {
  return runProgram({"xdotool", "getactivewindow", "getwindowname"}, {}, display).output;
}

void Application::press(const std::string& keys, const Environment& display) {
  runProgram({"xdotool", "key", keys}, {}, display);
}

void Application::type(const std::string& text, const Environment& display) {
  runProgram({"xdotool", "type", "--delay", "0", text}, {}, display);
}

void Application::beginRenaming(const Environment& display) {
  // One that does not run yet would be started.
  EXPECT_TRUE(eventually([&] { return hasWindow("Quillo", display); }));
  EXPECT_EQ(0, secondStart({}, display));
  EXPECT_TRUE(eventually(
      [&] { return runProgram({"xdotool", "getactivewindow", "getwindowname"}, {}, display).output == "Quillo\n"; }));
  press("F2", display);
}

void Application::beginTyping(const std::function<std::string()>& library, const Environment& display) {
  const bool isSaved = eventually([&] {
    beginRenaming(display);
    press("Escape", display);
    press("Home", display);  // selects; what is selected is loaded before it can be renamed
    press("F2", display);
    press("ctrl+a", display);
    type("First", display);
    return eventually([&] { return library().find("\"First\"") != std::string::npos; }, 2);
  });
  EXPECT_TRUE(isSaved);
}

void Application::addCapture() {
  PosixFileSystem fileSystem;
  FixedWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore(libraryPath(), {fileSystem, trash, clock, identifiers}, ArtifactProjection::standard())
      .create(makeDraft());
}

std::string Application::libraryPath() {
  return std::string(getenv("XDG_DATA_HOME")) + "/Quillo/Artifacts";
}

std::string Application::library() {
  return runProgram({"sh", "-c", R"(cat "$0"/*/manifest.json)", libraryPath()}).output;
}

}  // namespace quillo::test
