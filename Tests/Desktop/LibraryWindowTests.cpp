// The library's window of the application itself, driven by keys.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "ApplicationFixture.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

std::size_t bundleCount(const std::string& library) {
  return std::stoul(runProgram({"sh", "-c", R"(ls -d "$0"/*.quillo 2>/dev/null | wc -l)", library}).output);
}

/// Puts a second and a third capture beside the first.
void addCopies(const std::string& library) {
  runProgram({"sh", "-c", R"sh(
    cd "$0" && first=$(basename *.quillo .quillo)
    for number in 2 3; do
      copy="${first%?}$((number + 3))"
      cp -r "$first.quillo" "$copy.quillo"
      sed -i "s/$first/$copy/; s/\"title\" *: *\"[^\"]*\"/\"title\": \"Copy $number\"/" "$copy.quillo/manifest.json"
    done)sh",
              library});
}

TEST_F(Application, theLibraryIsSearchedTrashedAndUndoneByKeys) {
  addCapture();
  addCopies(libraryPath());
  ASSERT_EQ(3U, bundleCount(libraryPath()));
  const auto application = start();
  ASSERT_TRUE(eventually([] { return hasWindow("Quillo"); }));
  const AccessibilitySnapshot window = readWindowHolding(*application, {"Copy 2", "Copy 3", "3 captures"});
  const std::set<std::string> interactive{"AXButton",   "AXTextField", "AXTextArea", "AXComboBox", "AXPopUpButton",
                                          "AXCheckBox", "AXMenuItem",  "AXList",     "AXTabGroup", "AXSearchField"};
  std::size_t namedCount = 0;
  for (const AccessibilityNode& node : window.nodes) {
    if (!interactive.contains(node.role)) continue;
    const bool isNamed = !textAttribute(node, "AXTitle").empty() || !textAttribute(node, "AXDescription").empty();
    EXPECT_TRUE(isNamed) << node.role << " " << node.id << "\n" << allTextOf(window);
    ++namedCount;
  }
  EXPECT_GE(namedCount, 5U);

  press("ctrl+f");
  type("copy 3");
  readWindowHolding(*application, {"1 of 3 captures"});
  press("Return");
  press("ctrl+f");
  press("BackSpace");
  press("Return");
  press("Home");
  press("shift+Down");
  press("Delete");
  ASSERT_TRUE(eventually([] { return bundleCount(libraryPath()) == 1; }));
  press("ctrl+z");
  EXPECT_TRUE(eventually([] { return bundleCount(libraryPath()) == 3; }));
}

}  // namespace
}  // namespace quillo::test
