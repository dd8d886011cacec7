// The application where the disk or its library lets it down.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "ApplicationFixture.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

bool mayMount() {
  return runProgram({"unshare", "--mount", "true"}).exitStatus == 0;
}

class ApplicationFault : public Application {
 protected:
  static void expectShown(const RunningProgram& application, const std::string& text) {
    EXPECT_THAT(allTextOf(readWindowHolding(application, {text})), HasSubstr(text));
  }
};

TEST_F(ApplicationFault, aFullDiskKeepsTheEditOnTheScreenAndSaysSo) {
  if (!mayMount()) GTEST_SKIP() << "only root may mount a disk";
  addCapture();
  const std::string disk = std::string(getenv("HOME")) + "/disk";
  std::filesystem::create_directory(disk);
  Arguments command{"unshare",
                    "--mount",
                    "sh",
                    "-c",
                    R"(mount -t tmpfs -o size=256k,mode=700 tmpfs "$0" && cp -a "$1"/. "$0" && shift && exec "$@")",
                    disk,
                    libraryPath()};
  for (const std::string& word : commandLine({"--library", disk})) command.push_back(word);
  RunningProgram application(command);
  // The disk as the application sees it, also after its end.
  const std::string mounted = "/proc/" + std::to_string(application.pid()) + "/root" + disk;
  ASSERT_TRUE(eventually([&] { return hasWindow("Quillo"); }));
  const int folder = ::open(mounted.c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_GE(folder, 0);
  const std::string seen = "/proc/self/fd/" + std::to_string(folder);
  const auto stored = [&] { return runProgram({"sh", "-c", R"(cat "$0"/*/manifest.json)", seen}).output; };
  beginTyping(stored);
  runProgram({"dd", "if=/dev/zero", "of=" + seen + "/filling", "bs=4k"});

  type(" unsaved");
  expectShown(application, "No space left on device");
  expectShown(application, "First unsaved");
  press("ctrl+q");
  expectShown(application, "Quillo could not finish saving edits before quitting. Try again.");
  EXPECT_FALSE(application.exitStatus()) << "an edit would be lost";
  EXPECT_THAT(stored(), HasSubstr("\"First\""));

  std::filesystem::remove(seen + "/filling");
  press("ctrl+q");
  EXPECT_TRUE(eventually([&] { return application.exitStatus() == 0; }));
  EXPECT_THAT(stored(), HasSubstr("\"First unsaved\""));
  ::close(folder);
}

TEST_F(ApplicationFault, aDamagedLibraryIsReportedAndTheRestWorks) {
  std::filesystem::create_directories(std::filesystem::path(libraryPath()).parent_path());
  std::ofstream(libraryPath()) << "no folder";
  const auto application = start();
  expectShown(*application, "Artifacts");
  const Editor editor;
  press("ctrl+alt+super+c");
  expectShown(*application, "it is not a directory");

  std::filesystem::remove(libraryPath());
  press("ctrl+alt+super+c");
  EXPECT_TRUE(eventually([] { return library().find("Mousepad") != std::string::npos; }));
}

}  // namespace
}  // namespace quillo::test
