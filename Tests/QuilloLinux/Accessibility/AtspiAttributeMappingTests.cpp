#include "QuilloLinux/Accessibility/AtspiAttributeMapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace quillo::test {
namespace {

AtspiNodeRecord makeRecord(AtspiRole role, std::string name = {}, std::initializer_list<unsigned> states = {}) {
  AtspiNodeRecord record;
  record.role = role;
  record.name = std::move(name);
  for (const unsigned state : {AtspiState::visible, AtspiState::showing, AtspiState::sensitive}) {
    record.states |= std::uint64_t{1} << state;
  }
  for (const unsigned state : states) record.states |= std::uint64_t{1} << state;
  return record;
}

AtspiNodeRecord withText(AtspiNodeRecord record, std::string text, std::int64_t count) {
  record.text.emplace();
  record.text->characterCount = count;
  record.text->text = interpretText(std::move(text), count);
  return record;
}

/// The attribute's value; a text "absent" when the element does not advertise it.
AccessibilityValue valueOf(const AtspiNodeRecord& record, std::string_view name,
                           AtspiToolkit toolkit = AtspiToolkit::gtk3, const AtspiWindowPlacement& placement = {}) {
  const AtspiMappedElement element = mapElement(record, toolkit, placement);
  const AccessibilityValue* value = element.attribute(name);
  return value == nullptr ? AccessibilityValue(std::string("absent")) : *value;
}

AccessibilityValue words(std::string value) {
  return value;
}
const AccessibilityValue absent = words("absent");

TEST(AtspiAttributeMapping, rolesAreRefinedByStatesAndWebRoles) {
  using enum AtspiRole;
  struct Case {
    AtspiNodeRecord record;
    const char* role;
  };
  const auto web = [](AtspiRole role, const char* key, const char* value) {
    AtspiNodeRecord record = makeRecord(role);
    record.attributes.emplace_back(key, value);
    return record;
  };
  const auto summary = [&](AtspiRole role) {
    AtspiNodeRecord record = web(role, "tag", "summary");
    record.states |= std::uint64_t{1} << AtspiState::expandable;
    return record;
  };
  EXPECT_EQ(valueOf(summary(toggleButton), "AXValue"), absent);
  const std::vector<Case> cases = {
      {makeRecord(entry), "AXTextField"},
      {makeRecord(entry, "", {AtspiState::multiLine}), "AXTextArea"},
      {web(entry, "text-input-type", "search"), "AXSearchField"},
      {makeRecord(section), "AXGroup"},
      {makeRecord(section, "", {AtspiState::editable, AtspiState::multiLine}), "AXTextArea"},
      {withText(makeRecord(paragraph), "Bare words", 10), "AXStaticText"},
      {withText(makeRecord(paragraph), "\uFFFC", 1), "AXGroup"},
      {web(toggleButton, "xml-roles", "switch"), "AXSwitch"},
      {summary(toggleButton), "AXDisclosureTriangle"},
      {summary(pushButton), "AXDisclosureTriangle"},
      {web(toggleButton, "tag", "summary"), "AXCheckBox"},
      {makeRecord(toggleButton, "", {AtspiState::expandable}), "AXCheckBox"},
      {makeRecord(comboBox), "AXPopUpButton"},
      {makeRecord(comboBox, "", {AtspiState::editable}), "AXComboBox"},
      {web(landmark, "xml-roles", "navigation"), "AXLandmarkNavigation"},
      {web(landmark, "xml-roles", "main"), "AXGroup"},
      {makeRecord(static_cast<AtspiRole>(4711)), "AXUnknown"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(valueOf(each.record, "AXRole"), words(each.role)) << static_cast<int>(each.record.role);
  }
}

TEST(AtspiAttributeMapping, namelessLabelsAreTheirText) {
  EXPECT_EQ(valueOf(withText(makeRecord(AtspiRole::label), "Page 1 of 2", 11), "AXValue"), words("Page 1 of 2"));
  EXPECT_EQ(valueOf(withText(makeRecord(AtspiRole::label, "Name"), "Text", 4), "AXValue"), words("Name"));
}

TEST(AtspiAttributeMapping, cellsOfParagraphsTellNeitherPlaceNorNought) {
  AtspiNodeRecord cell = makeRecord(AtspiRole::tableCell, "AB12");
  cell.value = 0;
  EXPECT_EQ(valueOf(cell, "AXTitle"), words("AB12")) << "a sheet's cell";
  EXPECT_EQ(valueOf(cell, "AXValue"), AccessibilityValue(0.0));
  cell.children = {7};
  EXPECT_EQ(valueOf(cell, "AXTitle"), absent);
  EXPECT_EQ(valueOf(cell, "AXValue"), absent);
  cell.name = "Mode A1";
  EXPECT_EQ(valueOf(cell, "AXTitle"), words("Mode A1"));
}

TEST(AtspiAttributeMapping, passwordFieldTellsNothingOfItsText) {
  AtspiNodeRecord record = makeRecord(AtspiRole::passwordText, "Password", {AtspiState::editable});
  record = withText(std::move(record), "open sesame", 11);  // should a reader ever have asked
  record.value = 11;
  const AtspiMappedElement element = mapElement(record, AtspiToolkit::gtk3, {});
  EXPECT_EQ(*element.attribute("AXSubrole"), words("AXSecureTextField"));
  EXPECT_EQ(*element.attribute("AXContainsProtectedContent"), AccessibilityValue(true));
  for (const char* name : {"AXNumberOfCharacters", "AXSelectedTextRange", "AXSelectedText"}) {
    EXPECT_EQ(element.attribute(name), nullptr) << name;
  }
  EXPECT_EQ(element.fullText, std::nullopt);
  for (const auto& [name, value] : element.attributes) {
    const auto* string = std::get_if<std::string>(&value);
    EXPECT_TRUE(string == nullptr || string->find("sesame") == std::string::npos) << name;
  }
}

TEST(AtspiAttributeMapping, namesGoWhereTheyBelong) {
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::label, "Words"), "AXValue"), words("Words"));
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::label, "Words"), "AXTitle"), absent);
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::entry, "GtkEntry"), "AXTitle", AtspiToolkit::gtk4), absent);
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::entry, "GtkEntry"), "AXTitle", AtspiToolkit::gtk3), words("GtkEntry"));
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::pageTab, "Tab"), "AXTitle", AtspiToolkit::gtk4), absent);
  // An entry that is named by its own text has no name.
  EXPECT_EQ(valueOf(withText(makeRecord(AtspiRole::entry, "joe"), "joe", 3), "AXTitle"), absent);

  AtspiNodeRecord labelled = makeRecord(AtspiRole::entry);
  labelled.labelledBy = "User";
  EXPECT_EQ(valueOf(labelled, "AXLabel"), words("User"));
  labelled.name = "User name";
  EXPECT_EQ(valueOf(labelled, "AXLabel"), absent);

  // One toolkit says in a combo box's name what was chosen.
  AtspiNodeRecord choice = makeRecord(AtspiRole::comboBox, "Austria");
  choice.labelledBy = "Country";
  EXPECT_EQ(valueOf(choice, "AXTitle", AtspiToolkit::qt), absent);
  EXPECT_EQ(valueOf(choice, "AXLabel", AtspiToolkit::qt), words("Country"));
  EXPECT_EQ(valueOf(choice, "AXValue", AtspiToolkit::qt), words("Austria"));
  EXPECT_EQ(valueOf(choice, "AXTitle", AtspiToolkit::gtk3), words("Austria"));

  AtspiNodeRecord described = makeRecord(AtspiRole::entry, "User");
  described.description = "Your user name";
  EXPECT_EQ(valueOf(described, "AXDescription", AtspiToolkit::chromium), words("Your user name"));
  EXPECT_EQ(valueOf(described, "AXPlaceholderValue", AtspiToolkit::qt), words("Your user name"));
  EXPECT_EQ(valueOf(described, "AXDescription", AtspiToolkit::qt), absent);
  described.attributes.emplace_back("description-from", "tooltip");
  EXPECT_EQ(valueOf(described, "AXHelp", AtspiToolkit::chromium), words("Your user name"));
}

TEST(AtspiAttributeMapping, statesAreToldAsTheyAre) {
  using namespace AtspiState;
  const auto button = makeRecord(AtspiRole::toggleButton, "Bold", {pressed, focusable});
  EXPECT_EQ(valueOf(button, "AXValue"), AccessibilityValue(std::int64_t{1}));
  EXPECT_EQ(valueOf(button, "AXEnabled"), AccessibilityValue(true));
  EXPECT_EQ(valueOf(button, "AXFocused"), AccessibilityValue(false));
  EXPECT_EQ(valueOf(button, "AXSelected"), absent);
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::checkBox, "All", {indeterminate, checked}), "AXValue"),
            AccessibilityValue(std::int64_t{2}));
  EXPECT_EQ(valueOf(makeRecord(AtspiRole::checkMenuItem, "Wrap", {checked}), "AXChecked"),
            AccessibilityValue(std::int64_t{1}));

  AtspiNodeRecord item = makeRecord(AtspiRole::menuItem, "Open");
  item.states &= ~(std::uint64_t{1} << showing);
  EXPECT_EQ(valueOf(item, "AXVisible"), AccessibilityValue(false));
  EXPECT_EQ(valueOf(item, "AXHidden"), absent);
  // One toolkit never says "showing"; what it has not laid out is not on the screen.
  EXPECT_EQ(valueOf(item, "AXVisible", AtspiToolkit::gtk4), AccessibilityValue(true));
  item.extents = ArtifactRect{.x = 10, .y = 10, .width = 0, .height = 0};
  EXPECT_EQ(valueOf(item, "AXVisible", AtspiToolkit::gtk4), AccessibilityValue(false));
}

TEST(AtspiAttributeMapping, textIsCountedInUtf16Units) {
  AtspiNodeRecord editor = withText(makeRecord(AtspiRole::text, "", {AtspiState::multiLine}), "a\U0001F600b", 3);
  editor.text->selection = std::pair(1, 3);
  EXPECT_EQ(valueOf(editor, "AXNumberOfCharacters"), AccessibilityValue(std::int64_t{4}));
  EXPECT_EQ(valueOf(editor, "AXSelectedTextRange"), AccessibilityValue(ArtifactTextRange{.location = 1, .length = 3}));
  EXPECT_EQ(valueOf(editor, "AXSelectedText"), words("\U0001F600b"));
  editor.text->selection.reset();
  editor.text->caret = 2;
  EXPECT_EQ(valueOf(editor, "AXSelectedTextRange"), AccessibilityValue(ArtifactTextRange{.location = 3, .length = 0}));
  editor.text->caret = -1;
  EXPECT_EQ(valueOf(editor, "AXSelectedTextRange"), absent);
  // What was announced and did not come stays visible as a difference.
  editor.text->characterCount = 1000;
  EXPECT_EQ(valueOf(editor, "AXNumberOfCharacters"), AccessibilityValue(std::int64_t{4 + 997}));
}

TEST(AtspiAttributeMapping, framesThatMeanNowhereAreAbsent) {
  AtspiNodeRecord record = makeRecord(AtspiRole::pushButton, "Go");
  constexpr double never = -2147483648.0;
  for (const ArtifactRect& nowhere : {ArtifactRect{.x = never, .y = never, .width = 10, .height = 10},
                                      ArtifactRect{.x = -1, .y = -1, .width = -1, .height = -1}, ArtifactRect{}}) {
    record.extents = nowhere;
    EXPECT_EQ(valueOf(record, "AXPosition"), absent);
  }
  record.extents = ArtifactRect{.x = 5, .y = 6, .width = 7, .height = 8};
  const AtspiWindowPlacement placement{.origin = {.x = 100, .y = 200}, .frame = {}};
  EXPECT_EQ(valueOf(record, "AXPosition", AtspiToolkit::gtk4, placement),
            AccessibilityValue(ArtifactPoint{.x = 105, .y = 206}));
}

TEST(AtspiAttributeMapping, webAttributesAreTranslated) {
  AtspiNodeRecord item = makeRecord(AtspiRole::treeItem, "Two");
  item.attributes = {{"level", "3"}, {"posinset", "2"},    {"setsize", "5"},     {"class", " big  red "},
                     {"id", "two"},  {"current", "false"}, {"haspopup", "menu"}, {"rowcount", "many"}};
  EXPECT_EQ(valueOf(item, "AXDisclosureLevel"), AccessibilityValue(std::int64_t{2}));
  EXPECT_EQ(valueOf(item, "AXARIAPosInSet"), AccessibilityValue(std::int64_t{2}));
  EXPECT_EQ(valueOf(item, "AXDOMClassList"), AccessibilityValue(std::vector<std::string>{"big", "red"}));
  EXPECT_EQ(valueOf(item, "AXHasPopup"), words("menu"));
  EXPECT_EQ(valueOf(item, "AXARIACurrent"), absent);
  EXPECT_EQ(valueOf(item, "AXARIARowCount"), absent) << "no number";
}

}  // namespace
}  // namespace quillo::test
