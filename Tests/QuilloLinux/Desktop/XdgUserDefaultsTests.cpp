#include "QuilloLinux/Desktop/XdgUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "InMemoryFileSystem.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/UserDefaultsContract.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

class XdgUserDefaultsFile : public testing::Test {
 protected:
  std::string contents() const {
    std::ifstream stream(file);
    return (std::ostringstream() << stream.rdbuf()).str();
  }

  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder)) found.push_back(entry.path().filename());
    return found;
  }

  static unsigned modeOf(const fs::path& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
  }

  TemporaryDirectory temporary;
  fs::path folder = temporary.path() / "config" / "Quillo";
  fs::path file = folder / "preferences.json";
  PosixFileSystem fileSystem;
  RandomUUIDGenerator identifiers;
  XdgUserDefaults defaults{fileSystem, identifiers, folder};
};

TEST_F(XdgUserDefaultsFile, keepsTheContract) {
  expectUserDefaultsContract(defaults);
}

TEST_F(XdgUserDefaultsFile, readingMakesNothing) {
  EXPECT_EQ(defaults.data("a"), std::nullopt);
  EXPECT_EQ(defaults.problem(), std::nullopt);
  defaults.remove("a");
  EXPECT_FALSE(fs::exists(folder));
}

TEST_F(XdgUserDefaultsFile, isReadableAndPrivate) {
  defaults.setInteger("onboardingVersion", 2);
  defaults.setData("hotKeyConfiguration", R"({ "version": 1 })");
  EXPECT_EQ(contents(), R"({
  "schemaVersion": 1,
  "values": {
    "hotKeyConfiguration": {"version":1},
    "onboardingVersion": 2
  }
}
)");
  EXPECT_EQ(modeOf(file), 0600U);
  EXPECT_EQ(modeOf(folder), 0700U);
  EXPECT_EQ(names(), std::vector<std::string>{"preferences.json"});
}

TEST_F(XdgUserDefaultsFile, othersChangesCountAndAreKept) {
  XdgUserDefaults other(fileSystem, identifiers, folder);
  defaults.setInteger("ours", 1);
  other.setInteger("theirs", 2);
  EXPECT_EQ(defaults.integer("theirs"), 2);
  defaults.setInteger("ours", 3);
  EXPECT_EQ(other.integer("ours"), 3);
  EXPECT_EQ(other.integer("theirs"), 2);

  writeFile(file, R"({"later": [1e400, {"x": "ü"}], "values": {"a": 12345678901234567890, "b": null},
                      "schemaVersion": 1.0})");
  EXPECT_TRUE(defaults.problem().has_value());  // a number that no double holds

  writeFile(file, R"({"later": [1.5, {"x": "ü"}], "values": {"a": 12345678901234567890, "b": null},
                      "schemaVersion": 1.0})");
  defaults.setInteger("ours", 4);
  EXPECT_EQ(contents(), R"({
  "schemaVersion": 1,
  "values": {
    "a": 12345678901234567890,
    "b": null,
    "ours": 4
  },
  "later": [1.5,{"x":"ü"}]
}
)");
}

TEST_F(XdgUserDefaultsFile, damagedFileIsPutAsideBeforeItIsReplaced) {
  for (const std::string damaged : {"", "{", "[]", R"({"values": {}})", R"({"schemaVersion": 1})",
                                    R"({"schemaVersion": 1, "values": 3})", "{\"schemaVersion\": 1, \"\xFF\": 2}"}) {
    writeFile(file, damaged);
    EXPECT_EQ(defaults.data("schemaVersion"), std::nullopt) << damaged;
    EXPECT_TRUE(defaults.problem().value_or("").contains("are damaged: ")) << damaged;
    EXPECT_EQ(contents(), damaged);

    defaults.setInteger("a", 1);
    EXPECT_EQ(defaults.integer("a"), 1) << damaged;
    EXPECT_EQ(defaults.problem(), std::nullopt) << damaged;
    ASSERT_TRUE(defaults.damagedFile().has_value());
    std::ifstream aside(*defaults.damagedFile());
    EXPECT_EQ((std::ostringstream() << aside.rdbuf()).str(), damaged);
  }
}

TEST_F(XdgUserDefaultsFile, whatIsNotOursToReplaceIsLeftAlone) {
  const std::string later = R"({"schemaVersion": 2, "values": {"a": 1}})";
  writeFile(file, later);
  EXPECT_EQ(defaults.integer("a"), std::nullopt);
  EXPECT_THROW(defaults.setInteger("a", 2), UnsupportedPreferencesError);
  EXPECT_EQ(contents(), later);
  EXPECT_EQ(defaults.problem(),
            "The settings in “" + file.native() + "” are of version 2, which this version of Quillo cannot change.");

  fs::rename(file, folder / "elsewhere.json");
  fs::create_symlink("elsewhere.json", file);
  EXPECT_THROW(defaults.setInteger("a", 2), FileSystemError);
  EXPECT_TRUE(fs::is_symlink(file));

  fs::remove(file);
  const std::string tooDeep = std::string(1023, '[') + "1" + std::string(1023, ']');
  EXPECT_THROW(defaults.setData("deep", tooDeep), JsonError);
  EXPECT_FALSE(fs::exists(file));
}

/// Every step of a change fails once: the old settings or the new ones are there afterwards, and nothing else is.
TEST(XdgUserDefaults, failedChangeLeavesTheOldSettings) {
  RandomUUIDGenerator identifiers;
  for (int step = 1;; ++step) {
    InMemoryFileSystem fileSystem;
    XdgUserDefaults defaults(fileSystem, identifiers, "/home/.config/Quillo");
    defaults.setInteger("a", 1);
    fileSystem.failAt(step, ENOSPC);
    bool hasFailed = false;
    try {
      defaults.setInteger("a", 2);
    } catch (const FileSystemError& error) {
      hasFailed = error.isSystemFailure(ENOSPC);
    }
    if (!hasFailed) {
      EXPECT_GT(step, 4);
      EXPECT_EQ(defaults.integer("a"), 2);
      break;
    }
    const auto value = defaults.integer("a");
    EXPECT_TRUE(value == 1 || value == 2) << step;
    EXPECT_EQ(fileSystem.openDirectory("/home/.config/Quillo")->entries().size(), 1U) << step;
  }
}

TEST(XdgUserDefaults, powerCutLeavesTheOldOrTheNewSettings) {
  RandomUUIDGenerator identifiers;
  for (int step = 1; step <= 8; ++step) {
    for (std::uint64_t seed = 0; seed < 16; ++seed) {
      InMemoryFileSystem fileSystem;
      XdgUserDefaults defaults(fileSystem, identifiers, "/home/.config/Quillo");
      defaults.setInteger("a", 1);
      fileSystem.failAt(step, 0);
      try {
        defaults.setInteger("a", 2);
      } catch (const PowerCut&) {
      }
      InMemoryFileSystem afterwards = fileSystem.afterPowerCut(seed);
      const XdgUserDefaults found(afterwards, identifiers, "/home/.config/Quillo");
      const auto value = found.integer("a");
      EXPECT_TRUE(value == 1 || value == 2) << "step " << step << ", seed " << seed;
    }
  }
}

TEST(XdgUserDefaults, liveInTheConfigurationDirectory) {
  const char* const home = std::getenv("HOME");
  const char* const configuration = std::getenv("XDG_CONFIG_HOME");
  const std::string oldHome = home == nullptr ? "" : home;
  const std::string oldConfiguration = configuration == nullptr ? "" : configuration;
  ::setenv("HOME", "/home/somebody", 1);
  ::setenv("XDG_CONFIG_HOME", "/etc/mine", 1);
  EXPECT_EQ(XdgUserDefaults::defaultDirectory(), "/etc/mine/Quillo");
  ::setenv("XDG_CONFIG_HOME", "mine", 1);
  EXPECT_EQ(XdgUserDefaults::defaultDirectory(), "/home/somebody/.config/Quillo");
  ::unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(XdgUserDefaults::defaultDirectory(), "/home/somebody/.config/Quillo");
  ::setenv("HOME", oldHome.c_str(), 1);
  if (configuration != nullptr) ::setenv("XDG_CONFIG_HOME", oldConfiguration.c_str(), 1);
}

}  // namespace
}  // namespace quillo::test
