// How one node becomes one element: role, names, value, states, actions, identifiers, visibility, protection.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceActions.h"
#include "QuilloCore/Semantics/InterfaceContentRange.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

InterfaceObservation normalized(const AccessibilitySnapshot& snapshot) {
  return AccessibilitySemanticNormalizer::normalize(snapshot, {});
}

/// The element that one line, put into a window, becomes; "" when it is dropped.
std::string mapped(std::string_view line) {
  const auto observation =
      normalized(makeSnapshot("window frame=0,0,400,300\n  " + std::string(line) + "\n  button 'after'"));
  const InterfaceElement* element = observation.element("element-1");
  return element == nullptr ? "" : describe(*element).substr(2);
}

struct Mapping {
  std::string_view line;
  std::string_view expected;
};

void expectMappings(const std::vector<Mapping>& mappings) {
  for (const Mapping& mapping : mappings) EXPECT_EQ(mapped(mapping.line), mapping.expected) << mapping.line;
}

TEST(NormalizerMapping, everyRoleHasItsMeaningActionsAndChildrenThatKeepIt) {
  struct Case {
    std::string_view accessibilityRole;
    std::string_view role;
    std::string_view actions;
    int childrenNeeded;  // of an element with nothing of its own
  };
  constexpr int never = 9;
  const std::vector<Case> cases = {
      {"AXApplication", "application", "", 0},
      {"AXWindow", "window", "", 0},
      {"AXGroup", "group", "", 2},
      {"AXLayoutArea", "group", "", 2},
      {"AXGenericElement", "group", "", 2},
      {"AXNavigation", "navigation", "", 1},
      {"AXLandmarkNavigation", "navigation", "", 1},
      {"AXToolbar", "toolbar", "", 1},
      {"AXTabGroup", "tabGroup", "", 1},
      {"AXRadioGroup", "tabGroup", "", 1},
      {"AXTab", "tab", "press?", 0},
      {"AXDocument", "document", "", 1},
      {"AXWebArea", "webArea", "", 1},
      {"AXScrollArea", "scrollArea", "", 1},
      {"AXHeading", "heading", "", 1},
      {"AXStaticText", "text", "", never},
      {"AXTextField", "textField", "edit? focus?", 0},
      {"AXTextArea", "textArea", "edit? focus?", 0},
      {"AXSearchField", "searchField", "edit? focus?", 0},
      {"AXButton", "button", "press?", 0},
      {"AXDisclosureTriangle", "disclosure", "press?", 0},
      {"AXLink", "link", "press?", 0},
      {"AXCheckBox", "checkbox", "toggle?", 0},
      {"AXRadioButton", "radioButton", "select?", 0},
      {"AXSwitch", "switchControl", "toggle?", 0},
      {"AXList", "list", "", 1},
      {"AXListItem", "listItem", "select?", 0},
      {"AXTable", "table", "", 1},
      {"AXRow", "row", "", 1},
      {"AXColumn", "column", "", 1},
      {"AXCell", "cell", "", 1},
      {"AXOutline", "tree", "", 1},
      {"AXOutlineRow", "treeItem", "select?", 0},
      {"AXMenuBar", "menuBar", "", 1},
      {"AXMenu", "menu", "", 1},
      {"AXMenuItem", "menuItem", "press?", 0},
      {"AXComboBox", "comboBox", "edit? showMenu?", 0},
      {"AXPopUpButton", "popUpButton", "showMenu?", 0},
      {"AXSlider", "slider", "decrement? increment?", 0},
      {"AXIncrementor", "stepper", "decrement? increment?", 0},
      {"AXScrollBar", "scrollBar", "", 1},
      {"AXValueIndicator", "valueIndicator", "", 1},
      {"AXImage", "image", "", never},
      {"AXIcon", "icon", "", never},
      {"AXProgressIndicator", "progressIndicator", "", 1},
      {"AXSplitGroup", "splitGroup", "", 1},
      {"AXBrowser", "browser", "", 1},
      {"AXSection", "unknown", "", never},
      {"AXbutton", "unknown", "", never},
  };
  for (const Case& one : cases) {
    const std::string actions = one.actions.empty() ? "" : " {" + std::string(one.actions) + "}";
    EXPECT_EQ(mapped(std::string(one.accessibilityRole) + " help=x"), std::string(one.role) + " help=\"x\"" + actions);
    std::string notation = "window\n  " + std::string(one.accessibilityRole) + "\n";
    for (int count = 0; count < 3; ++count, notation += "    button\n") {
      const bool isKept = normalized(makeSnapshot(notation)).element("element-1") != nullptr;
      EXPECT_EQ(isKept, count >= one.childrenNeeded) << notation;
    }
  }
}

TEST(NormalizerMapping, roleIsRefinedByTheSubroleExactly) {
  expectMappings({
      {"window subrole=AXDialog", "dialog"},
      {"window subrole=AXSystemDialog", "dialog"},
      {"window subrole=AXSheet", "sheet"},
      {"window subrole=AXStandardWindow", "window"},
      {"textField subrole=AXSearchField", "searchField {edit? focus?}"},
      {"textField subrole=AXSecureTextField", "textField {edit? focus?}"},
      {"textArea subrole=AXSearchField", "textArea {edit? focus?}"},
      {"button subrole=AXDisclosureTriangle", "disclosure {press?}"},
      {"button subrole=AXdisclosureTriangle", "button {press?}"},
  });
}

TEST(NormalizerMapping, onlyPlainGroupsBecomeSections) {
  expectMappings({
      {"group 'Named'", "section \"Named\""},
      {"group description='Told'", "section description=\"Told\""},
      {"group id=main", "section #accessibility:main"},
      {"group help='Aid'", "group help=\"Aid\""},
      {"AXGenericElement 'Named'", "group \"Named\""},
      {"AXLayoutArea 'Named'", "group \"Named\""},
      {"group id=_NS:12 help='Aid'", "group help=\"Aid\""},
  });
}

TEST(NormalizerMapping, namesAreTheFirstAttributeWithText) {
  expectMappings({
      {"button 'Title' label='Label'", "button \"Title\" {press?}"},
      {"button ' \\n\\t' label=' Label\\r\\nTwo\\rThree '", "button \"Label\\nTwo\\nThree\" {press?}"},
      {"button AXTitle=5 description='Told' help='Aid'", "button description=\"Told\" help=\"Aid\" {press?}"},
      {"textField placeholder='Type'", "textField placeholder=\"Type\" {edit? focus?}"},
      {"list id=sidebar", "list \"sidebar\" #accessibility:sidebar"},
      {"table id=grid AXDOMIdentifier=g", "table \"grid\" #accessibility:grid #dom:g"},
      {"list 'Files' id=sidebar", "list \"Files\" #accessibility:sidebar"},
      {"table id=_NS:9 AXDOMIdentifier=grid", "table #dom:grid"},
      {"toolbar id=main", "toolbar #accessibility:main"},
      {"button AXAccessKey=s id=s AXDOMIdentifier=_NS:3", "button {press?} #accessibility:s #accessKey:s"},
  });
}

TEST(NormalizerMapping, valueKeepsItsTypeAndContentBelongsToDocuments) {
  expectMappings({
      {"slider value=0.5", "slider value=0.5 {decrement? increment?}"},
      {"text value='  kept  '", "text value=\"  kept  \""},
      {"textArea text=' all\\r\\nof it ' value=part", "textArea content=\"all\\nof it\" value=\"part\" {edit? focus?}"},
      {"textField text=all value=part", "textField value=\"part\" {edit? focus?}"},
      {"text value=<redacted>", "text value=redacted"},
  });
}

TEST(NormalizerMapping, rangesFollowTheCharactersOfTheCleanedContent) {
  const auto mappedRange = [](std::string_view raw, std::int64_t location, std::int64_t length) {
    const ArtifactTextRange clean = rangeInCleanText(raw, {.location = location, .length = length});
    return std::to_string(clean.location) + "+" + std::to_string(clean.length);
  };
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 3, 2), "0+2");
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 0, 4), "0+1");
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 4, 5), "1+4");  // "b", the pair, "cd"
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 7, 0), "3+0");
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 11, 1), "7+1");
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 12, 0), "8+0");
  EXPECT_EQ(mappedRange(" \n ab\r\ncd\re ", 12, 1), "12+1");  // beyond the text
  EXPECT_EQ(mappedRange(" \U0001F600a ", 3, 1), "2+1");
  EXPECT_EQ(mapped("textArea text='\\n\\nab' AXSelectedTextRange=2..3"),
            "textArea content=\"ab\" selectedTextRange=0+1 {edit? focus?}");
}

TEST(NormalizerMapping, booleansAreReadFromEveryTypeThatStandsForOne) {
  expectMappings({
      {"group help=x AXModal=true AXRequired=false", "group help=\"x\" modal !required"},
      {"group help=x AXModal=7 AXRequired=0", "group help=\"x\" modal !required"},
      {"group help=x AXInvalid=Valid AXEdited=TRUE", "group help=\"x\" edited !invalid"},
      {"group help=x AXInvalid=Invalid AXVisited=False", "group help=\"x\" invalid !visited"},
      {"group help=x AXModal=-1 AXEdited=''", "group help=\"x\" modal"},
      {"group help=x AXInvalid=spelling AXEdited=1.0 AXARIABusy=BUSY", "group help=\"x\" busy"},
      {"group help=x AXVisited=<redacted> AXExpanded=a|b", "group help=\"x\""},
  });
}

TEST(NormalizerMapping, checkStateIsReadFromCheckedThenFromAToggleValue) {
  expectMappings({
      {"checkBox value=2", "checkbox value=2 checked:mixed {toggle?}"},
      {"checkBox value=1.0", "checkbox value=1 checked:on {toggle?}"},
      {"checkBox value=3", "checkbox value=3 {toggle?}"},
      {"checkBox value=No", "checkbox value=\"No\" checked:off {toggle?}"},
      {"checkBox value=yes", "checkbox value=\"yes\" {toggle?}"},
      {"menuItem AXChecked=TRUE", "menuItem checked:on {press?}"},
      {"menuItem AXChecked=checked", "menuItem checked:on {press?}"},
      {"menuItem AXChecked=selected", "menuItem checked:on {press?}"},
      {"menuItem AXChecked=False", "menuItem checked:off {press?}"},
      {"menuItem AXChecked=false", "menuItem checked:off {press?}"},
      {"menuItem AXChecked=unchecked", "menuItem checked:off {press?}"},
      {"menuItem AXChecked=mixed", "menuItem checked:mixed {press?}"},
      {"menuItem AXChecked=2.5", "menuItem {press?}"},
      {"radioButton value=true", "radioButton value=true checked:on {select?}"},
      {"switch value=Indeterminate", "switchControl value=\"Indeterminate\" checked:mixed {toggle?}"},
      {"checkBox value=1 AXChecked=unselected", "checkbox value=1 checked:off {toggle?}"},
      {"checkBox value=1 AXChecked=odd", "checkbox value=1 {toggle?}"},
      {"menuItem value=1", "menuItem value=1 {press?}"},
      {"menuItem AXChecked=1", "menuItem checked:on {press?}"},
  });
}

TEST(NormalizerMapping, propertiesAreReadInTheirTypes) {
  expectMappings({
      {"heading 'H' AXHeadingLevel=2", "heading \"H\" headingLevel=2"},
      {"heading 'H' AXHeadingLevel=2.0", "heading \"H\" headingLevel=2"},
      {"heading 'H' AXHeadingLevel=2.5 AXDisclosureLevel=x AXIndex=1e300", "heading \"H\""},
      {"cell 'C' AXDisclosureLevel=1 AXIndex=2 AXARIAPosInSet=3 AXARIASetSize=4 AXARIARowCount=5 AXARIAColumnCount=6",
       "cell \"C\" columnCount=6 disclosureLevel=1 index=2 positionInSet=3 rowCount=5 setSize=4"},
      {"cell 'C' AXOrientation=o AXARIACurrent=page AXHasPopup=menu AXDocument=d AXFilename=f AXValueDescription=v",
       "cell \"C\" current=\"page\" document=\"d\" filename=\"f\" hasPopup=\"menu\" orientation=\"o\" "
       "valueDescription=\"v\""},
      {"link 'L' AXURL=http://a.example AXDOMClassList='a| |b'",
       "link \"L\" domClasses=[\"a\", \"b\"] url=\"http://a.example\" {press?}"},
      {"textArea AXSelectedText=b AXSelectedTextRange=1..2 AXVisibleCharacterRange=0..9",
       "textArea selectedText=\"b\" selectedTextRange=1+1 visibleTextRange=0+9 {edit? focus?}"},
  });
}

TEST(NormalizerMapping, listedActionsAreDistinctSortedAndReplaceInferredOnes) {
  expectMappings({
      {"button actions=AXShowMenu,AXPress,AXPress", "button {press showMenu}"},
      {"button actions=AX,Do,AXIncrement", "button {aX do increment}"},
      {"button actions=,", "button {press?}"},
      {"image 'i' actions=Zoom,AXZoom", "image \"i\" {zoom}"},
  });
  EXPECT_EQ(normalizedActionName("AX" + std::string(78, 'a')), std::string(78, 'a'));
  EXPECT_EQ(normalizedActionName("AX" + std::string(79, 'a')), std::nullopt);
  EXPECT_EQ(normalizedActionName(std::string(79, 'a') + "e\u0301"), std::string(79, 'a') + "e\u0301");
  EXPECT_EQ(normalizedActionName("  \r\n"), std::nullopt);
  for (const char* const lineBreak : {"\r", "\n", "\v", "\f", "\u0085", "\u2028", "\u2029"}) {
    EXPECT_EQ(normalizedActionName("Two" + std::string(lineBreak) + "lines"), std::nullopt);
  }
  EXPECT_EQ(normalizedActionName("\r\n\u2003AXPress\u00a0\n"), "press");
  EXPECT_EQ(normalizedActionName("AXZ"), "z");
  EXPECT_EQ(normalizedActionName("AX\u00c4ndern"), "\u00e4ndern");

  const auto withoutInference = AccessibilitySemanticNormalizer::normalize(
      makeSnapshot("window\n  button 'a'"), {.synthesizeApplicationRoot = true, .inferConservativeActions = false});
  EXPECT_EQ(describe(withoutInference), "- application\n  0 window\n    1 button \"a\"\n");
}

TEST(NormalizerMapping, visibilityFollowsItsPrecedence) {
  expectMappings({
      {"button AXHidden=true AXVisible=true frame=0,0,9,9", "button {press?} hidden"},
      {"button AXHidden=false AXOffscreen=1 AXVisible=true", "button {press?} offscreen"},
      {"button AXIsOffscreen=true frame=0,0,9,9", "button {press?} offscreen"},
      {"button AXOffscreen=false AXVisible=false frame=0,0,9,9", "button {press?} offscreen"},
      {"button AXVisible=true frame=0,0,0,9", "button {press?}"},
      {"button frame=0,0,0,9", "button {press?} offscreen"},
      {"button frame=0,0,9,0", "button {press?} offscreen"},
      {"button frame=10,10,9,-9", "button {press?} offscreen"},
      {"button frame=400,0,9,9", "button {press?} offscreen"},
      {"button frame=399.5,0,9,9", "button {press?}"},
      {"button frame=-9,0,9,9", "button {press?} offscreen"},
      {"button frame=0,300,9,9", "button {press?} offscreen"},
  });

  using enum InterfaceVisibility;
  const auto visibilityOf = [](const AccessibilitySnapshot& snapshot) {
    return nameOf(normalized(snapshot).element("element-1")->visibility);
  };
  EXPECT_EQ(visibilityOf(makeSnapshot("window frame=0,0,9,9\n  button")), nameOf(unknown));
  EXPECT_EQ(visibilityOf(makeSnapshot("window\n  button frame=900,900,9,9")), nameOf(visible));
  EXPECT_EQ(visibilityOf(makeSnapshot("application\n  button frame=900,900,9,9")), nameOf(visible));
  // The first window has no frame, so there is no viewport although the second one has a frame.
  EXPECT_EQ(visibilityOf(makeSnapshot("window\n  button frame=900,900,9,9\n  window frame=0,0,9,9")), nameOf(visible));
  // The first is the one with the lowest id, wherever it stands in a file.
  AccessibilitySnapshot disordered =
      makeSnapshot("window frame=0,0,9,9\n  button frame=0,0,9,9\n  window frame=500,0,9,9");
  std::ranges::reverse(disordered.nodes);
  EXPECT_EQ(visibilityOf(disordered), nameOf(visible));

  AccessibilitySnapshot strange = makeSnapshot("window frame=0,0,9,9\n  button frame=1,1,2,2");
  strange.nodes[0].frame.reset();
  strange.nodes[1].frame->width = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(visibilityOf(strange), nameOf(offscreen));
  strange.nodes[0].frame = ArtifactRect{.x = 0, .y = 0, .width = 9, .height = 9};
  strange.nodes[1].frame = ArtifactRect{.x = std::nan(""), .y = 0, .width = 9, .height = 9};
  EXPECT_EQ(visibilityOf(strange), nameOf(offscreen));
}

TEST(NormalizerMapping, atMostTheKnownFocusedNodeIsFocused) {
  const std::string_view notation =
      "window\n"
      "  button 'a' AXFocused=true\n"
      "  button 'b' AXFocused=false\n"
      "  button 'c'\n";
  EXPECT_EQ(describe(normalized(makeSnapshot(notation))),
            "- application\n"
            "  0 window\n"
            "    1 button \"a\" focused {press?}\n"
            "    2 button \"b\" !focused {press?}\n"
            "    3 button \"c\" {press?}\n");
  EXPECT_EQ(describe(normalized(makeSnapshot(notation, 3))),
            "- application\n"
            "  0 window\n"
            "    1 button \"a\" {press?}\n"
            "    2 button \"b\" !focused {press?}\n"
            "    3 button \"c\" focused {press?}\n");
  const InterfaceObservation unfocused = normalized(makeSnapshot(notation, 99));
  EXPECT_EQ(unfocused.element("element-1")->state.focused, std::nullopt);
  EXPECT_EQ(unfocused.element("element-2")->state.focused, false);
}

TEST(NormalizerMapping, protectedFieldKeepsNeitherItsTextNorItsLength) {
  EXPECT_EQ(mapped("textArea 'Secret' [focused, protected] value=hunter2 text=hunter2 placeholder=p AXSelectedText=unt "
                   "AXSelectedTextRange=1..4 AXVisibleCharacterRange=0..7 AXValueDescription=hunter2"),
            "textArea \"Secret\" placeholder=\"p\" focused {edit? focus?} protected");
}

TEST(NormalizerMapping, retentionFollowsItsSteps) {
  expectMappings({
      {"text", ""},
      {"text AXRoleDescription=text", ""},
      {"text AXEnabled=true", ""},
      {"text [protected]", "text protected"},
      {"text id=a", "text #accessibility:a"},
      {"text actions=AXPress", "text {press}"},
      {"text [selected]", "text selected"},
      {"image AXSelected=false AXVisited=true", ""},
      {"image [focused]", "image focused"},
      {"image AXARIABusy=busy", "image busy"},
      {"image AXInvalid=true", "image invalid"},
      {"image placeholder=p", "image placeholder=\"p\""},
      {"image AXExpanded=false", "image !expanded"},
      {"image AXEdited=true", "image edited"},
      {"image AXRoleDescription=image", "image roleDescription=\"image\""},
      {"foo AXRequired=true", ""},
      {"foo AXModal=true", "unknown modal"},
      {"foo value=0", "unknown value=0"},
      {"foo value=' '", ""},
      {"scrollBar value=0.25", "scrollBar value=0.25"},
  });
}

}  // namespace
}  // namespace quillo::test
