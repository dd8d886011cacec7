#include "QuilloLinux/Desktop/LibraryWatcher.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "Tests/Support/ManualLoop.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

class LibraryWatcherTest : public testing::Test {
 protected:
  void watch() {
    watcher.emplace(library, loop.executor(), [this] { ++toldCount; });
  }

  /// Whether the change is told.
  bool isTold(const std::function<void()>& change) {
    loop.runReady();
    toldCount = 0;
    change();
    return loop.runUntil([&] { return toldCount > 0; });
  }

  void makeBundle(const std::string& name) { writeFile(library / name / "manifest.json", "{}"); }

  TemporaryDirectory folder;
  fs::path library = folder.path() / "Quillo" / "Artifacts";
  ManualLoop loop;
  int toldCount = 0;
  std::optional<LibraryWatcher> watcher;
};

TEST_F(LibraryWatcherTest, tellsWhatBecomesOfBundles) {
  makeBundle("old.quillo");
  fs::last_write_time(library / "old.quillo", fs::file_time_type::clock::now() - std::chrono::minutes(1));
  watch();
  EXPECT_TRUE(isTold([&] { makeBundle("new.quillo"); }));
  for (const std::string name : {"old.quillo", "new.quillo"}) {
    EXPECT_TRUE(isTold([&] {
      writeFile(library / name / ".manifest.tmp", "{ }");
      fs::rename(library / name / ".manifest.tmp", library / name / "manifest.json");
    })) << name;
  }
  EXPECT_TRUE(isTold([&] { fs::rename(library / "old.quillo", folder.path() / "old.quillo"); }));
  EXPECT_TRUE(isTold([&] { fs::rename(folder.path() / "old.quillo", library / "back.quillo"); }));
  EXPECT_TRUE(isTold([&] { writeFile(library / "back.quillo" / "manifest.json", "{  }"); }));
  EXPECT_TRUE(isTold([&] { fs::remove_all(library / "back.quillo"); }));
}

TEST_F(LibraryWatcherTest, tellsWhatChangedWhileItBegan) {
  makeBundle("changed.quillo");
  fs::last_write_time(library / "changed.quillo", fs::file_time_type::clock::now() + std::chrono::seconds(1));
  EXPECT_TRUE(isTold([&] { watch(); }));
}

TEST_F(LibraryWatcherTest, waitsForALibraryThatIsNotThereOrHasGone) {
  watch();
  EXPECT_TRUE(isTold([&] { makeBundle("first.quillo"); }));
  EXPECT_TRUE(isTold([&] { fs::remove_all(library); }));
  EXPECT_TRUE(isTold([&] { makeBundle("second.quillo"); }));
  EXPECT_TRUE(isTold([&] { writeFile(library / "second.quillo" / "manifest.json", "{ }"); }));
}

TEST_F(LibraryWatcherTest, tellsNothingAfterItsEnd) {
  fs::create_directories(library);
  watch();
  makeBundle("a.quillo");
  watcher.reset();
  const int told = toldCount;
  loop.runReady();
  EXPECT_EQ(toldCount, told);
}

}  // namespace
}  // namespace quillo::test
