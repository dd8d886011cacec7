// How one node becomes one element: role, names, value, states, actions, identifiers, visibility, protection.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceActions.h"
#include "QuilloCore/Semantics/InterfaceContentRange.h"
#include "QuilloCore/Semantics/InterfaceRoleMapping.h"
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

TEST(NormalizerMapping, roleIsRefinedByTheSubroleExactly) {
  const std::vector<std::tuple<std::string_view, std::string_view, InterfaceSemanticRole>> cases = {
      {"AXWindow", "AXDialog", InterfaceSemanticRole::dialog},
      {"AXWindow", "AXSystemDialog", InterfaceSemanticRole::dialog},
      {"AXWindow", "AXSheet", InterfaceSemanticRole::sheet},
      {"AXWindow", "AXStandardWindow", InterfaceSemanticRole::window},
      {"AXTextField", "AXSearchField", InterfaceSemanticRole::searchField},
      {"AXTextField", "AXSecureTextField", InterfaceSemanticRole::textField},
      {"AXTextArea", "AXSearchField", InterfaceSemanticRole::textArea},
      {"AXButton", "AXDisclosureTriangle", InterfaceSemanticRole::disclosure},
      {"AXButton", "axdisclosuretriangle", InterfaceSemanticRole::button},
      {"AXRadioGroup", "", InterfaceSemanticRole::tabGroup},
      {"AXLandmarkNavigation", "", InterfaceSemanticRole::navigation},
      {"AXGenericElement", "", InterfaceSemanticRole::group},
      {"AXIncrementor", "", InterfaceSemanticRole::stepper},
      {"AXOutlineRow", "", InterfaceSemanticRole::treeItem},
      {"axbutton", "", InterfaceSemanticRole::unknown},
      {"AXSection", "", InterfaceSemanticRole::unknown},
      {"", "", InterfaceSemanticRole::unknown},
  };
  for (const auto& [role, subrole, expected] : cases) {
    const auto optionalSubrole = subrole.empty() ? std::nullopt : std::optional<std::string>(subrole);
    EXPECT_EQ(nameOf(semanticRole(role, optionalSubrole)), nameOf(expected)) << role << "/" << subrole;
  }
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
      {"heading 'H' AXHeadingLevel=2.5 AXDisclosureLevel=x", "heading \"H\""},
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
      {"tab", "tab {press?}"},
      {"comboBox", "comboBox {edit? showMenu?}"},
      {"popUpButton", "popUpButton {showMenu?}"},
      {"listItem", "listItem {select?}"},
      {"image 'i'", "image \"i\""},
  });
  EXPECT_EQ(normalizedActionName("AX" + std::string(78, 'a')), std::string(78, 'a'));
  EXPECT_EQ(normalizedActionName("AX" + std::string(79, 'a')), std::nullopt);
  EXPECT_EQ(normalizedActionName("  \r\n"), std::nullopt);
  EXPECT_EQ(normalizedActionName("Two\rLines"), std::nullopt);
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
  EXPECT_EQ(visibilityOf(makeSnapshot("window\n  window frame=900,900,9,9\n  window frame=0,0,9,9")), nameOf(visible));

  AccessibilitySnapshot strange = makeSnapshot("window frame=0,0,9,9\n  button frame=1,1,2,2");
  strange.nodes[1].frame->width = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(visibilityOf(strange), nameOf(offscreen));
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
  EXPECT_EQ(describe(normalized(makeSnapshot(notation, 2))),
            "- application\n"
            "  0 window\n"
            "    1 button \"a\" {press?}\n"
            "    2 button \"b\" focused {press?}\n"
            "    3 button \"c\" {press?}\n");
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
      {"image", ""},
      {"image AXSelected=false AXVisited=true", ""},
      {"image AXExpanded=false", "image !expanded"},
      {"image AXEdited=true", "image edited"},
      {"image AXRoleDescription=image", "image roleDescription=\"image\""},
      {"foo AXRequired=true", ""},
      {"foo AXModal=true", "unknown modal"},
      {"foo value=0", "unknown value=0"},
      {"button AXEnabled=true", "button enabled {press?}"},
      {"list", ""},
      {"cell", ""},
      {"scrollBar", ""},
      {"scrollBar value=0.25", "scrollBar value=0.25"},
      {"group", ""},
      {"window", "window"},
  });
}

}  // namespace
}  // namespace quillo::test
