#include "QuilloLinux/Desktop/DesktopEntries.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

class DesktopEntriesTest : public testing::Test {
 protected:
  void SetUp() override {
    ::setenv("XDG_DATA_HOME", (directory_.path() / "own").c_str(), 1);
    ::setenv("XDG_DATA_DIRS", ("relative:" + (directory_.path() / "shared").string()).c_str(), 1);
  }

  void write(const std::string& path, const std::string& lines) {
    writeFile(directory_.path() / path, "[Desktop Entry]\nType=Application\n" + lines);
  }

  static std::string found(const std::string& windowClass) {
    const auto entry = DesktopEntries::findByWindowClass(windowClass);
    return entry ? entry->id + ": " + entry->localizedName : "";
  }

  TemporaryDirectory directory_;
};

TEST_F(DesktopEntriesTest, entryIsFoundByItsNameAndTheUsersOwnComesFirst) {
  write("shared/applications/editor.desktop", "Name=Editor\n");
  write("shared/applications/Viewer.desktop", "Name=Viewer\n");
  EXPECT_EQ(found("editor"), "editor: Editor");
  EXPECT_EQ(found("Editor"), "editor: Editor");
  EXPECT_EQ(found("Viewer"), "Viewer: Viewer");
  write("own/applications/editor.desktop", "Name=My editor\n");
  EXPECT_EQ(found("editor"), "editor: My editor");
  write("own/applications/editor.desktop", "Name=My editor\nHidden=true\n");
  EXPECT_EQ(found("editor"), "");
  EXPECT_EQ(found("nobody"), "");
  EXPECT_EQ(found(""), "");
  EXPECT_EQ(found("../applications/editor"), "");
}

TEST_F(DesktopEntriesTest, entryIsFoundByItsStartupClassAlsoInASubfolder) {
  write("shared/applications/vendor/tool.desktop", "Name=Tool\nStartupWMClass=Vendor Tool\r\n");
  write("shared/applications/other.desktop", "Name=Other\nComment=StartupWMClass=Vendor Tool\n");
  EXPECT_EQ(found("vendor tool"), "vendor-tool: Tool");
}

TEST_F(DesktopEntriesTest, damagedEntriesAreNone) {
  write("shared/applications/nameless.desktop", "StartupWMClass=Nameless\n");
  write("shared/applications/forged.desktop", "Name=Two\\nlines \xff\n");
  std::filesystem::create_directories(directory_.path() / "shared/applications/folder.desktop");
  EXPECT_EQ(found("nameless"), "");
  EXPECT_EQ(found("folder"), "");
  EXPECT_EQ(found("forged").find('\n'), std::string::npos);
}

}  // namespace
}  // namespace quillo::test
