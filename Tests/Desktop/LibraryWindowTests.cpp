// The library's window of the application itself, driven by keys and read by the command.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "ApplicationFixture.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;

class LibraryOfThree : public Application {
 protected:
  /// Three captures of one moment: "First" as it was captured, "Harbour", "Lantern".
  void SetUp() override {
    Application::SetUp();
    if (IsSkipped()) return;
    addCapture();
    runProgram({"sh", "-c", R"sh(
      cd "$0" && first=$(basename *.quillo .quillo)
      for title in 5Harbour 6Lantern; do
        copy="${first%?}${title%%[!0-9]*}"
        cp -r "$first.quillo" "$copy.quillo"
        sed -i "s/$first/$copy/; s/\"title\" *: *\"[^\"]*\"/\"title\": \"${title#?}\"/" "$copy.quillo/manifest.json"
      done)sh",
                libraryPath()});
    ASSERT_EQ(3U, bundleCount());
    application_ = start();
    ASSERT_TRUE(shows("3 captures"));
  }

  static std::size_t bundleCount() {
    return std::stoul(runProgram({"sh", "-c", R"(ls -d "$0"/*.quillo 2>/dev/null | wc -l)", libraryPath()}).output);
  }

  /// The bundle of the capture with that title.
  static std::string bundleOf(const std::string& title) {
    std::string path = runProgram({"sh", "-c", R"(grep -l "$1" "$0"/*/manifest.json | xargs dirname)", libraryPath(),
                                   "\"" + title + "\""})
                           .output;
    if (path.ends_with('\n')) path.pop_back();
    return path;
  }

  /// Whether the window in front comes to say this, as the command reads it.
  static bool shows(const std::string& text) {
    return eventually([&] { return runQuillo({"snapshot"}).output.find(text) != std::string::npos; });
  }

 private:
  std::unique_ptr<RunningProgram> application_;
};

TEST_F(LibraryOfThree, hasNoUnnamedControl) {
  const auto window = decodeJson<AccessibilitySnapshot>(runQuillo({"snapshot"}).output);
  const std::set<std::string> named{"AXButton",   "AXTextField", "AXTextArea", "AXComboBox", "AXPopUpButton",
                                    "AXCheckBox", "AXMenuItem",  "AXList",     "AXListItem", "AXTabGroup",
                                    "AXTab",      "AXImage",     "AXOutline",  "AXRow",      "AXSearchField"};
  std::set<std::string> seen;
  for (const AccessibilityNode& node : window.nodes) {
    if (!named.contains(node.role)) continue;
    seen.insert(node.role);
    const bool isNamed = !textAttribute(node, "AXTitle").empty() || !textAttribute(node, "AXDescription").empty();
    EXPECT_TRUE(isNamed) << node.role << " " << node.id << "\n" << allTextOf(window);
  }
  for (const std::string role : {"AXButton", "AXTextField", "AXPopUpButton", "AXList", "AXListItem", "AXImage"})
    EXPECT_TRUE(seen.contains(role)) << role;
  EXPECT_TRUE(shows("Ready")) << "what the application does is said to those who do not see it";
}

TEST_F(LibraryOfThree, isSearchedEditedTrashedAndUndoneByKeys) {
  press("ctrl+f");
  type("lantern");
  EXPECT_TRUE(shows("1 of 3 captures"));
  press("Return");
  press("F2");
  press("End");
  type(" of the tide");
  EXPECT_TRUE(eventually([] { return library().find("\"Lantern of the tide\"") != std::string::npos; }));
  press("ctrl+f");
  press("BackSpace");
  press("Return");
  EXPECT_TRUE(shows("3 captures"));
  press("Home");
  press("shift+Down");
  press("Delete");
  ASSERT_TRUE(eventually([] { return bundleCount() == 1; }));
  press("ctrl+z");
  EXPECT_TRUE(eventually([] { return bundleCount() == 3; }));
}

TEST_F(LibraryOfThree, listObeysItsKeys) {
  press("Home");
  press("shift+End");
  EXPECT_TRUE(shows("3 selected"));
  press("Home");
  press("ctrl+Down");
  press("ctrl+Down");
  press("ctrl+space");
  EXPECT_TRUE(shows("2 selected"));
  press("Up");
  EXPECT_TRUE(shows("\"3 captures\""));

  press("ctrl+c");
  const std::string id = bundleOf("Harbour").substr(libraryPath().size() + 1, 36);
  const std::string text = runQuillo({"text", id}).output;
  EXPECT_THAT(text, HasSubstr("Harbour"));
  EXPECT_TRUE(eventually([&] { return clipboardText() + "\n" == text; })) << clipboardText();

  press("space");
  EXPECT_TRUE(eventually([] { return hasWindow("Harbour"); }));
  press("Down");
  EXPECT_TRUE(eventually([] { return hasWindow("Lantern"); })) << "the full-size look follows the list";
  press("Escape");
  EXPECT_TRUE(eventually([] { return !hasWindow("Lantern"); }));
  EXPECT_TRUE(shows("3 captures"));

  press("Return");
  press("ctrl+a");
  type("Renamed");
  EXPECT_TRUE(eventually([] { return library().find("\"Renamed\"") != std::string::npos; }));
  press("ctrl+f");
  type("walrus");
  EXPECT_TRUE(shows("0 of 3 captures"));
  press("Escape");
  EXPECT_TRUE(shows("\"3 captures\""));
}

TEST_F(LibraryOfThree, followsWhatOthersDoToIt) {
  press("Home");
  press("Down");
  EXPECT_TRUE(shows("\"Harbour\"")) << "in the inspector";
  runProgram({"sed", "-i", "s/\"Harbour\"/\"Changed outside\"/", bundleOf("Harbour") + "/manifest.json"});
  EXPECT_TRUE(shows("\"Changed outside\""));
  runProgram({"sh", "-c", R"(printf '{' > "$0"/manifest.json)", bundleOf("Lantern")});
  EXPECT_TRUE(shows("2 captures, 1 damaged"));
  runProgram({"rm", "-r", bundleOf("Changed outside")});
  EXPECT_TRUE(shows("1 capture, 1 damaged"));
  EXPECT_EQ(runQuillo({"snapshot"}).output.find("Changed outside"), std::string::npos);
}

}  // namespace
}  // namespace quillo::test
