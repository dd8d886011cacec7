#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"
#include "Tests/Support/ObservationBuilder.h"
#include "Tests/Support/RenderedSection.h"

namespace quillo::test {
namespace {

std::string map(std::string_view notation) {
  return section(InterfaceObservationLLMRenderer::render(observation(notation)), "## Interface map");
}

struct LineCase {
  std::string label;
  std::string element;
  std::string expected;
};

void expectLines(const std::vector<LineCase>& cases) {
  for (const LineCase& lineCase : cases) EXPECT_EQ(map(lineCase.element), lineCase.expected) << lineCase.label;
}

TEST(RendererLines, displayRoles) {
  expectLines({
      {"a heading's level", "heading 'Results' level=2", "- heading level 2 \"Results\""},
      {"a heading without a level", "heading 'Results'", "- heading \"Results\""},
      {"a role with words of its own", "popUpButton 'Size'", "- pop-up button \"Size\""},
      {"a nameless group of two", "group\n  button 'A'\n  button 'B'",
       "- container\n  - button \"A\"\n  - button \"B\""},
      {"a nameless group of one", "group\n  button 'A'", "- group\n  - button \"A\""},
      {"a named group of two", "section 'Tools'\n  button 'A'\n  button 'B'",
       "- section \"Tools\"\n  - button \"A\"\n  - button \"B\""},
      {"a payload is no name", "section 'data:image/png;base64,AAAA'\n  button 'A'\n  button 'B'",
       "- container\n  - button \"A\"\n  - button \"B\""},
      {"a description that says more than the role", "section 'A' roleDescription='carousel'", "- carousel \"A\""},
      {"one beside the role", "button 'A' roleDescription='split button'", "- button (split button) \"A\""},
      {"the role once more", "popUpButton 'A' roleDescription='Popup  Button'", "- pop-up button \"A\""},
      {"the raw role", "button 'A' raw=AXFoo roleDescription='axfoo'", "- button \"A\""},
      {"a word that says nothing", "section 'A' roleDescription='Group'", "- section \"A\""},
      {"a description that would forge a line", "group 'A' roleDescription='button (focused) \"B\"'",
       "- group (\"button (focused) \\\"B\\\"\") \"A\""},
  });
}

TEST(RendererLines, stateWords) {
  expectLines({
      {"in their order",
       "checkbox 'A' [edited, invalid, busy, visited, modal, required, mixed, expanded, selected, focused, disabled]",
       "- checkbox (disabled, focused, selected, expanded, partially checked, required, modal, visited, busy, invalid, "
       "edited) \"A\""},
      {"mixed and disabled", "checkbox [mixed, disabled]", "- checkbox (disabled, partially checked)"},
      {"off and collapsed", "treeItem 'A' [unchecked, collapsed]", "- outline row (collapsed, unchecked) \"A\""},
      {"a label behind the field", "group\n  textField 'Name'\n  text 'Name'",
       "- container\n  - text field (editable) \"Name\""},
      {"editable before hidden", "group\n  text 'Name'\n  textField 'Name' [hidden, required]",
       "- container\n  - text field (required, editable, hidden) \"Name\""},
  });
}

TEST(RendererLines, primaryTextsAndValues) {
  expectLines({
      {"a quotation mark, a backslash and a line feed", "button 'a\"b\\\\c\\nd'", "- button \"a\\\"b\\\\c\\nd\""},
      {"a text's value before its label", "text 'Seen' label='Said'", "- text \"Seen\"\n  label: \"Said\""},
      {"a field's value is not its name", "textField value='Ada' placeholder='Your name'",
       "- text field \"Your name\", value: \"Ada\""},
      {"a button's value may be", "button value='Play' help='Starts the film'",
       "- button \"Play\"\n  help: \"Starts the film\""},
      {"a value equal to the name", "link 'Home' value=' Home '", "- link \"Home\""},
      {"a value of several lines", "textField 'Note' value='a\\n\\nb'",
       "- text field \"Note\"\n  value:\n      a\n      \n      b"},
      {"typed values", "slider 'A' number=0.5", "- slider \"A\", value: 0.5"},
      {"a truth value", "unknown 'A' boolean=true", "- unknown \"A\", value: true"},
      {"a base64 payload", "image 'A' value='" + std::string(513, 'A') + "'", "- image \"A\""},
      {"a long word that is none", "image 'A' value='" + std::string(512, 'A') + "'",
       "- image \"A\", value: \"" + std::string(512, 'A') + "\""},
      {"only invisible characters", "button '\u200B\u00AD' description='Go'", "- button \"Go\""},
  });
}

TEST(RendererLines, valuesOfEveryKind) {
  const std::vector<std::pair<AccessibilityAttributeValue, std::string>> cases = {
      {std::string("a\"b\n"), "\"a\\\"b\\n\""},
      {true, "true"},
      {std::int64_t{INT64_MIN}, "-9223372036854775808"},
      {std::numeric_limits<double>::infinity(), "null"},
      {std::numeric_limits<double>::quiet_NaN(), "null"},
      {1e21, "1000000000000000000000"},
      {2.25, "2.25"},
      {-0.5, "-0.5"},
      {1.00004, "1"},
      {99.99996, "100"},
      {ArtifactPoint{.x = 1, .y = -2.5}, "{x:1, y:-2.5}"},
      {ArtifactSize{.width = 0.125, .height = 20}, "{width:0.125, height:20}"},
      {ArtifactRect{.x = 0, .y = 1, .width = 10, .height = 0.33333}, "{x:0, y:1, width:10, height:0.3333}"},
      {ArtifactTextRange{.location = 4, .length = 0}, "{location:4, length:0}"},
      {std::vector<std::string>{"a", "", "c, d"}, "[\"a\", \"\", \"c, d\"]"},
      {std::vector<std::string>{}, "[]"},
      {RedactedValue{}, "<redacted>"},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(renderedValue(value), expected);
}

TEST(RendererLines, details) {
  expectLines({
      {"in order, each once",
       "textField 'Name' description='Full  name' help='Full name' placeholder='Ada' valueDescription='empty'",
       "- text field \"Name\"\n  description: \"Full  name\"\n  placeholder: \"Ada\"\n  value detail: \"empty\""},
      {"of several lines", "button 'A' help='one\\ntwo'", "- button \"A\"\n  help:\n      one\n      two"},
  });
}

TEST(RendererLines, actionsThatSayMoreThanTheRole) {
  expectLines({
      {"inferred ones", "button 'A' inferred=press,archive", "- button \"A\""},
      {"what one expects", "button 'A' actions=press,showMenu,showContextMenu,confirm,raise,pick,focus,scrollToVisible",
       "- button \"A\""},
      {"an action of its own", "button 'A' actions=press,archive,star", "- button \"A\", actions: archive, star"},
      {"opening what is closed", "group 'A' [collapsed] actions=expand", "- group (collapsed) \"A\""},
      {"opening what has no such state", "group 'A' actions=expand", "- group \"A\", actions: expand"},
      {"a text that can be pressed", "text 'A' actions=press", "- text \"A\", actions: press"},
      {"a name that would forge a line", "button 'A' actions='x: \"y\"'", "- button \"A\", actions: \"x: \\\"y\\\"\""},
  });
}

TEST(RendererLines, namesThatRepeatWhatStandsInsideAreShortened) {
  expectLines({
      {"a label around its control", "text 'Rating good'\n  popUpButton 'Rating' value='good'",
       "- pop-up button \"Rating\", value: \"good\""},
      {"a label that says more", "text 'Rating good' [focused]\n  popUpButton 'Rating' value='good'",
       "- text (focused)\n  - pop-up button \"Rating\", value: \"good\""},
      {"texts that only make up the name", "listItem '1. Bread'\n  text '1.'\n  text 'Bread'",
       "- list item \"1. Bread\""},
      {"a tab group named by the tab in front", "tabGroup 'One'\n  tab 'One'\n  tab 'Two'",
       "- tab group\n  - tab \"One\"\n  - tab \"Two\""},
  });
}

TEST(RendererLines, menusThatNobodySeesHaveNoLines) {
  expectLines({
      {"a menu bar that gave its place to another",
       "window 'A'\n  menuBar bounds='0 0 90 20'\n    menu 'File' bounds='0 0 20 20'\n"
       "  menuBar bounds='0 0 90 0'\n    menu 'File' bounds='0 0 20 20'",
       "- window \"A\"\n  - menu bar\n    - menu \"File\""},
      {"one that is in use", "menuBar bounds='0 0 90 0'\n  menu 'File' [focused]",
       "- menu bar\n  - menu (focused) \"File\""},
      {"a button's closed menu",
       "button 'More'\n  menuItem 'Dock' [offscreen]\n  menu 'Tabs' [offscreen]\n    menuItem 'A'"
       " [offscreen]",
       "- button \"More\""},
      {"one that is open", "button 'More'\n  menuItem 'Dock' [visible]\n  menuItem 'Float' [offscreen, selected]",
       "- button \"More\"\n  - menu item \"Dock\"\n  - menu item (selected) \"Float\""},
  });
}

TEST(RendererLines, protectedElementsShowNeitherTextNorLength) {
  expectLines({
      {"all the places of a value",
       "textField 'PIN' [protected] value='1234' content='1234' valueDescription='four characters' placeholder='PIN "
       "code'",
       "- text field \"PIN\"\n  placeholder: \"PIN code\"\n  content: <redacted protected content>"},
      {"a withheld value", "textField 'PIN' [protected] redacted=yes",
       "- text field \"PIN\", value: <redacted>\n  content: <redacted protected content>"},
      {"what a protected element contains", "group [protected]\n  text '1234' [protected]\n  text 'Hint'",
       "- container\n  content: <redacted protected content>\n  - text\n  - text \"Hint\""},
  });
}

}  // namespace
}  // namespace quillo::test
