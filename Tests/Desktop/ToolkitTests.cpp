// What every toolkit's windows must yield, and what they must never yield.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "RunningProgram.h"
#include "WindowReading.h"

namespace quillo::test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(Toolkits, gtk3EditorGivesDocumentSelectionAndFocus) {
  const RunningProgram editor({"mousepad", writeFile("letter.txt", "One \U0001F600 two\nthree")});
  readWindowHolding(editor, {"three"});
  // Home of the text, over the first word and the astral character, selected to the right.
  runProgram({"xdotool", "key", "--clearmodifiers", "ctrl+Home"});
  runProgram({"xdotool", "key", "--clearmodifiers", "shift+Right", "shift+Right", "shift+Right", "shift+Right",
              "shift+Right"});
  AccessibilitySnapshot snapshot;
  const AccessibilityNode* text = nullptr;
  eventually([&] {
    snapshot = readWindow(awaitWindow(editor));
    text = findNode(snapshot, "AXTextArea");
    const auto* range = text == nullptr ? nullptr : text->attribute("AXSelectedTextRange");
    // Four characters and one that takes two UTF-16 units.
    return range != nullptr && *range == AccessibilityAttributeValue(ArtifactTextRange{.location = 0, .length = 6});
  });
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(textAttribute(*text, "AXFullText"), "One \U0001F600 two\nthree");
  ASSERT_NE(text->attribute("AXSelectedTextRange"), nullptr);
  EXPECT_EQ(*text->attribute("AXSelectedTextRange"),
            AccessibilityAttributeValue(ArtifactTextRange{.location = 0, .length = 6}));
  EXPECT_EQ(snapshot.focusedNodeID, text->id);
  EXPECT_EQ(snapshot.rootKind, AccessibilityRootKind::focusedWindow);
}

TEST(Toolkits, gtk4GalleryIsPlacedOnTheScreenAndKeepsItsPassword) {
  const RunningProgram gallery({"gtk4-widget-factory"});
  const AccessibilitySnapshot snapshot = readWindowHolding(gallery, {"checkbutton"});
  const WindowCaptureTarget target = awaitWindow(gallery);
  EXPECT_EQ(snapshot.nodes[0].frame, target.windowFrame);
  EXPECT_GT(snapshot.nodes.size(), 500U);
  const std::string all = allTextOf(snapshot);
  for (const char* words : {"comboboxentry", "Click icon to change mode", "radiobutton"}) {
    EXPECT_THAT(all, HasSubstr(words));
  }
  EXPECT_THAT(all, Not(HasSubstr("\"GtkEntry\""))) << "a class name is no name";
  std::size_t protectedCount = 0;
  for (const AccessibilityNode& node : snapshot.nodes) {
    if (node.subrole == "AXSecureTextField") ++protectedCount;
    if (!node.isProtected) continue;
    EXPECT_EQ(textAttribute(node, "AXValue"), "");
    EXPECT_EQ(node.attribute("AXNumberOfCharacters"), nullptr) << "nor its length";
  }
  EXPECT_GT(protectedCount, 0U);
}

// An entry that shows marks has the role of any other, and its text interface hands the secret out.
TEST(Toolkits, gtk4EntriesThatConcealTheirTextArePasswords) {
  const RunningProgram program({QUILLO_TEST_PROGRAMS "/gtk4-secrets.py"});
  const AccessibilitySnapshot snapshot = readWindowHolding(program, {"last words"});
  EXPECT_THAT(allTextOf(snapshot), HasSubstr("plain words"));
  EXPECT_THAT(allTextOf(snapshot), Not(HasSubstr("secret of")));
  EXPECT_EQ(std::ranges::count(snapshot.nodes, true, &AccessibilityNode::isProtected), 4);
}

const std::string page = R"(<!doctype html><title>Local page</title>
<nav><a href="#home">Home</a> <a href="#about">About us</a></nav>
<h1>Main heading</h1><p>Some <b>bold</b> words.</p>
<p><time>Noon</time>, <em>stressed</em> and <strong>strong</strong></p><pre><code>make everything</code></pre>
<ul><li>First point</li><li>Second point</li></ul>
<table><tr><th>Name</th><th>Age</th></tr><tr><td>Ann</td><td>42</td></tr></table>
<form><label for=u>User</label><input id=u value=joe>
<label for=p>Secret</label><input id=p type=password value="hunter2-very-secret">
<input type=checkbox id=c checked><label for=c>Remember</label>
<textarea aria-label=Message>Two
lines</textarea><button>Send it</button></form>
<div style="display:none">never shown</div><div hidden>nor this</div>
<iframe srcdoc="<p>Words in a frame</p>"></iframe>
<label>Colour <select><option>Red<option selected>Green</select></label>
<div id=host></div><script>
host.attachShadow({mode:'open'}).innerHTML='<p>Words in the shadow</p>'</script>)";

TEST(Toolkits, chromiumPageIsReadWithFramesShadowsAndForms) {
  const RunningProgram browser(chromiumShowing("file://" + writeFile("page.html", page)));
  const AccessibilitySnapshot snapshot = readWindowHolding(browser, {"Words in a frame", "Main heading", "Send it"});
  const std::string all = allTextOf(snapshot);
  for (const char* words : {"Main heading", "Home", "About us", "bold", "Noon", "stressed", "strong", "make everything",
                            "First point", "Second point", "Ann", "42", "User", "joe", "Remember", "Two\\nlines",
                            "Send it", "Words in a frame", "Words in the shadow"}) {
    EXPECT_THAT(all, HasSubstr(words));
  }
  for (const char* words : {"hunter2", "never shown", "nor this", "\u2022\u2022\u2022"}) {
    EXPECT_THAT(all, Not(HasSubstr(words)));
  }
  const AccessibilityNode* heading = findNode(snapshot, "AXHeading", "Main heading");
  ASSERT_NE(heading, nullptr);
  EXPECT_EQ(*heading->attribute("AXHeadingLevel"), AccessibilityAttributeValue(std::int64_t{1}));
  EXPECT_NE(findNode(snapshot, "AXWebArea", "Local page"), nullptr);
  EXPECT_NE(findNode(snapshot, "AXRow"), nullptr);
  const AccessibilityNode* select = findNode(snapshot, "AXPopUpButton", "Colour");
  ASSERT_NE(select, nullptr);
  EXPECT_EQ(textAttribute(*select, "AXValue"), "Green");
  const AccessibilityNode* checkbox = findNode(snapshot, "AXCheckBox", "Remember");
  ASSERT_NE(checkbox, nullptr);
  EXPECT_EQ(*checkbox->attribute("AXValue"), AccessibilityAttributeValue(std::int64_t{1}));
}

TEST(Toolkits, firefoxPageKeepsTheWordsBetweenElements) {
  const std::string profile = writeFile("profile", "") + "-folder";
  std::filesystem::create_directory(profile);
  const std::string mixed =
      page +
      "<p>Before \U0001F600 <a href='https://example.org/'>the link</a> after it.</p><ul><li>A <a "
      "href='#'>second</a> point";
  const RunningProgram browser(
      {"firefox-esr", "--no-remote", "--profile", profile, "file://" + writeFile("page.html", mixed)});
  const AccessibilitySnapshot snapshot = readWindowHolding(browser, {"Words in a frame", "Main heading", "second"});
  const std::string all = allTextOf(snapshot);
  for (const char* words :
       {"Main heading", "Some bold words.", "Noon", "stressed", "strong", "make everything", "First point", "Ann",
        "joe", "Two\\nlines", "Words in the shadow", "Before \U0001F600", "the link", "after it.", "second"}) {
    EXPECT_THAT(all, HasSubstr(words));
  }
  for (const char* words : {"hunter2", "never shown", "nor this", "\u25CF\u25CF", "\u2022\u2022"}) {
    EXPECT_THAT(all, Not(HasSubstr(words)));
  }
  const AccessibilityNode* link = findNode(snapshot, "AXLink", "the link");
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(textAttribute(*link, "AXURL"), "https://example.org/");
  // Words and elements in the order in which one reads them.
  std::vector<std::string> paragraph;
  for (const std::int64_t child : snapshot.nodes[*link->parentID].childIDs) {
    const AccessibilityNode& node = snapshot.nodes[child];
    paragraph.push_back(textAttribute(node, "AXTitle") + textAttribute(node, "AXValue"));
  }
  EXPECT_EQ(paragraph, (std::vector<std::string>{"Before \U0001F600", "the link", "after it."}));
}

/// One program, built with either version of the toolkit.
class QtVersions : public testing::TestWithParam<const char*> {};

TEST_P(QtVersions, giveRowsLabelsAndKeepTheirSecrets) {
  const RunningProgram widgets({GetParam()});
  const AccessibilitySnapshot snapshot = readWindowHolding(widgets, {"First tab"});
  const std::string all = allTextOf(snapshot);
  for (const char* words : {"Your user name", "Remember me", "Austria", "Volume", "Vienna", "Letters",
                            "A note \U0001F600 of\\ntwo lines", "on the first tab"}) {
    EXPECT_THAT(all, HasSubstr(words));
  }
  for (const char* words : {"secret of mode", "never shown", "on the second tab", "\u25CF\u25CF"}) {
    EXPECT_THAT(all, Not(HasSubstr(words)));
  }
  EXPECT_EQ(std::ranges::count(snapshot.nodes, true, &AccessibilityNode::isProtected), 3);

  const AccessibilityNode* user = findNode(snapshot, "AXTextField", "User");
  ASSERT_NE(user, nullptr);
  EXPECT_EQ(textAttribute(*user, "AXValue"), "joe");
  EXPECT_EQ(snapshot.focusedNodeID, user->id);
  const AccessibilityNode* country = findNode(snapshot, "AXPopUpButton");
  ASSERT_NE(country, nullptr);
  EXPECT_EQ(textAttribute(*country, "AXLabel"), "Country");
  EXPECT_EQ(textAttribute(*country, "AXValue"), "Austria");
  // The toolkit gives neither rows nor positions of cells: one row of headers and two of cells.
  const AccessibilityNode* table = findNode(snapshot, "AXTable");
  ASSERT_NE(table, nullptr);
  std::vector<std::string> rows;
  for (const AccessibilityNode& node : snapshot.nodes) {
    if (node.parentID != table->id || node.role != "AXRow") continue;
    std::string& row = rows.emplace_back();
    for (const std::int64_t cell : node.childIDs) row += textAttribute(snapshot.nodes[cell], "AXTitle") + "|";
  }
  EXPECT_EQ(rows, (std::vector<std::string>{"Name|City|", "1|Ann|Vienna|", "2|Bob|Bruges|"}));
}

INSTANTIATE_TEST_SUITE_P(Toolkits, QtVersions, testing::Values(QUILLO_QT_PROGRAM, QUILLO_QT5_PROGRAM),
                         [](const auto& version) { return version.index == 0 ? "qt6" : "qt5"; });

constexpr const char* officeProgram = "/usr/lib/libreoffice/program/soffice.bin";

/// Starts an office program of the suite, which is too large to be installed for the tests alone.
std::optional<RunningProgram> startOffice(const std::string& kind, const std::string& file) {
  if (!std::filesystem::exists(officeProgram)) return std::nullopt;
  const std::string profile = "-env:UserInstallation=file://" + std::string(std::getenv("HOME")) + "/office";
  // With a new profile it ends at once, to be started again.
  runProgram({officeProgram, "--headless", "--terminate_after_init", profile});
  const Arguments arguments = {officeProgram, "--norestore", "--nologo", "--nolockcheck", profile, "--" + kind, file};
  return std::optional<RunningProgram>(std::in_place, arguments);
}

TEST(Toolkits, wordProcessorsParagraphsAreText) {
  const auto office = startOffice("writer", writeFile("letter.html",
                                                      "<h1>A letter</h1><p>Dear <b>bold</b> reader \U0001F600 of it."
                                                      "<ul><li>First point</ul><p>The last line."));
  if (!office) GTEST_SKIP() << "LibreOffice is not installed";
  const AccessibilitySnapshot snapshot = readWindowHolding(*office, {"The last line.", "First point"});
  EXPECT_NE(findNode(snapshot, "AXHeading", "A letter"), nullptr);
  std::vector<std::string> lines;
  for (const AccessibilityNode& node : snapshot.nodes) {
    if (node.role == "AXStaticText") lines.push_back(textAttribute(node, "AXValue"));
  }
  EXPECT_THAT(lines, testing::IsSupersetOf({"Dear bold reader \U0001F600 of it.", "The last line."}));
}

TEST(Toolkits, spreadsheetsCellsOnTheScreenAreReadAndNoOthers) {
  const auto office = startOffice("calc", writeFile("table.slk",
                                                    "ID;PWXL;N;E\nC;Y1;X1;K\"Name\"\nC;Y1;X2;K\"Amount\"\n"
                                                    "C;Y2;X1;K\"Ann\"\nC;Y2;X2;K42\nC;Y900;X1;K\"below\"\nE\n"));
  if (!office) GTEST_SKIP() << "LibreOffice is not installed";
  const AccessibilitySnapshot snapshot = readWindowHolding(*office, {"\"Ann\"", "\"42\""});
  const AccessibilityNode* cell = findNode(snapshot, "AXCell", "A2");
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(textAttribute(*cell, "AXValue"), "Ann");
  EXPECT_NE(findNode(snapshot, "AXCell", "B2"), nullptr);
  EXPECT_EQ(findNode(snapshot, "AXCell", "C2"), nullptr) << "it is empty";
  EXPECT_EQ(findNode(snapshot, "AXCell", "A900"), nullptr) << "it is not on the screen";
  EXPECT_THAT(snapshot.warnings, testing::Contains(HasSubstr("on the screen were read")));
}

}  // namespace
}  // namespace quillo::test
