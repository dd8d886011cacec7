#include "QuilloLinux/Desktop/XdgUserDefaults.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "InMemoryFileSystem.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/UserDefaultsContract.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

class XdgUserDefaultsFile : public testing::Test {
 protected:
  std::string contents() const { return readFile(file); }

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
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
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
    EXPECT_EQ(readFile(*defaults.damagedFile()), damaged);
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

/// At every step of a change the disk is full once, or the power is cut: afterwards the old settings or the new ones
/// are there.
TEST(XdgUserDefaults, interruptedChangeLeavesTheOldOrTheNewSettings) {
  const fs::path folder = "/home/.config/Quillo";
  RandomUUIDGenerator identifiers;
  for (const int errorNumber : {ENOSPC, 0}) {
    bool wasInterrupted = true;
    for (int step = 1; wasInterrupted; ++step) {
      InMemoryFileSystem fileSystem;
      XdgUserDefaults defaults(fileSystem, identifiers, folder);
      defaults.setInteger("a", 1);
      fileSystem.failAt(step, errorNumber);
      wasInterrupted = false;
      try {
        defaults.setInteger("a", 2);
        EXPECT_GT(step, 4);
        EXPECT_EQ(defaults.integer("a"), 2);
      } catch (const FileSystemError& error) {
        wasInterrupted = error.isSystemFailure(ENOSPC);
        EXPECT_EQ(fileSystem.openDirectory(folder)->entries().size(), 1U) << "the draft is gone, step " << step;
      } catch (const PowerCut&) {
        wasInterrupted = true;
      }
      for (std::uint64_t seed = 0; seed < 16; ++seed) {
        InMemoryFileSystem afterwards =
            errorNumber == 0 ? fileSystem.afterPowerCut(seed) : fileSystem.afterProcessDeath();
        const auto value = XdgUserDefaults(afterwards, identifiers, folder).integer("a");
        EXPECT_TRUE(value == 2 || (wasInterrupted && value == 1)) << "step " << step << ", seed " << seed;
      }
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
