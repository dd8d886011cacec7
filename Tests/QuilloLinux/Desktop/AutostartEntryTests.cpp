#include "QuilloLinux/Desktop/AutostartEntry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;

TEST(AutostartEntry, isWrittenAndTakenAway) {
  const TemporaryDirectory temporary;
  const fs::path folder = temporary.path() / "config" / "autostart";
  const fs::path file = folder / "org.quillo.Quillo.desktop";
  PosixFileSystem fileSystem;
  RandomUUIDGenerator identifiers;
  AutostartEntry entry(fileSystem, identifiers, "/opt/a b/100%/$q\"\\/quillo-app", folder);

  EXPECT_FALSE(entry.isEnabled());
  entry.setEnabled(false);
  EXPECT_FALSE(fs::exists(folder));

  entry.setEnabled(true);
  EXPECT_TRUE(entry.isEnabled());
  EXPECT_NE(readFile(file).find(R"(Exec="/opt/a b/100%%/\\$q\\"\\\\/quillo-app" --background)"), std::string::npos)
      << readFile(file);
  EXPECT_EQ(std::system(("desktop-file-validate '" + file.string() + "'").c_str()), 0);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);

  entry.setEnabled(false);
  EXPECT_FALSE(entry.isEnabled());
  EXPECT_TRUE(fs::is_empty(folder));
}

TEST(AutostartEntry, desktopMaySwitchItOff) {
  const TemporaryDirectory temporary;
  const fs::path file = temporary.path() / "org.quillo.Quillo.desktop";
  PosixFileSystem fileSystem;
  RandomUUIDGenerator identifiers;
  AutostartEntry entry(fileSystem, identifiers, "quillo-app", temporary.path());
  entry.setEnabled(true);
  const std::string enabled = readFile(file);
  for (const std::string line : {"Hidden=true", "Hidden = true\nIcon=x", "X-GNOME-Autostart-enabled=false"}) {
    writeFile(file, enabled + line);
    EXPECT_FALSE(entry.isEnabled()) << line;
    entry.setEnabled(true);
    EXPECT_TRUE(entry.isEnabled()) << line;
    EXPECT_EQ(readFile(file), enabled) << line;
  }
}

}  // namespace
}  // namespace quillo::test
