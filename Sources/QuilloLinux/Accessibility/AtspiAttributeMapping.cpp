#include "QuilloLinux/Accessibility/AtspiAttributeMapping.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/WhiteSpace.h"
#include "QuilloLinux/Accessibility/AtspiActions.h"
#include "QuilloLinux/Accessibility/AtspiMixedText.h"
#include "QuilloLinux/Accessibility/AtspiNames.h"

namespace quillo {
namespace {

using Role = AtspiRole;

/// Builds the element attribute by attribute; each function adds what one aspect of the record tells.
class ElementMapper {
 public:
  ElementMapper(const AtspiNodeRecord& record, AtspiToolkit toolkit, const AtspiWindowPlacement& placement)
      : record_(record), toolkit_(toolkit), placement_(placement), names_(accessibleNames(record, toolkit)) {}

  AtspiMappedElement map() && {
    addRole();
    addNames();
    addText();
    addValue();
    addStates();
    addWebAttributes();
    addLinks();
    addGeometry();
    element_.actions = mapActions(record_.actions);
    return std::move(element_);
  }

 private:
  void add(std::string_view name, AccessibilityValue value) {
    element_.attributes.emplace_back(std::string(name), std::move(value));
  }
  void addText(std::string_view name, std::string_view text) {
    if (!text.empty()) add(name, std::string(text));
  }
  void addNumber(std::string_view name, std::string_view attribute, std::int64_t offset = 0) {
    const std::string* text = record_.attribute(attribute);
    std::int64_t number = 0;
    if (text != nullptr && std::from_chars(text->data(), text->data() + text->size(), number).ec == std::errc{}) {
      add(name, number + offset);
    }
  }
  void addWord(std::string_view name, std::string_view attribute) {
    if (const std::string* text = record_.attribute(attribute)) addText(name, *text);
  }

  bool hasWebRole(std::string_view role) const {
    const std::string* roles = record_.attribute("xml-roles");
    return roles != nullptr && std::ranges::count(splittingAtWhiteSpace(*roles), role) > 0;
  }

  bool isSearch() const {
    const std::string* type = record_.attribute("text-input-type");
    return (type != nullptr && *type == "search") || hasWebRole("searchbox");
  }

  /// What opens and closes a part of a page. Browsers give it the role of one button or another.
  bool isSummary() const {
    const std::string* tag = record_.attribute("tag");
    return tag != nullptr && *tag == "summary" && record_.is(AtspiState::expandable);
  }

  /// A page's block that one may write into. The paragraphs of a word processor are each an object too, but a document
  /// of them is no row of editors.
  bool isEditableBlock() const {
    const bool isBlock =
        record_.role == Role::section || (record_.role == Role::paragraph && toolkit_ != AtspiToolkit::gtk3);
    return isBlock && record_.is(AtspiState::editable) && record_.is(AtspiState::multiLine);
  }

  AtspiRoleNames refinedRole() const {
    switch (record_.role) {
      case Role::text:
      case Role::entry:
      case Role::autocomplete:
        if (isSearch()) return {"AXSearchField", ""};
        if (record_.is(AtspiState::multiLine)) return {"AXTextArea", ""};
        break;
      case Role::section:
      case Role::paragraph:
        if (isEditableBlock()) return {"AXTextArea", ""};
        break;
      case Role::checkBox:
      case Role::toggleButton:
      case Role::pushButton:
        if (hasWebRole("switch")) return {"AXSwitch", ""};
        if (isSummary()) return {"AXDisclosureTriangle", ""};
        break;
      case Role::comboBox:
        if (record_.is(AtspiState::editable)) return {"AXComboBox", ""};
        break;
      case Role::landmark:
        if (hasWebRole("navigation")) return {"AXLandmarkNavigation", ""};
        break;
      default: break;
    }
    if (isBareText()) return {"AXStaticText", ""};
    return roleNames(record_.role);
  }

  /// A block whose words stand nowhere but in its text: no child and no name has them.
  bool isBareText() const {
    const bool isBlock = isTextBlock(record_.role) && record_.role != Role::heading && !isTableCell(record_.role);
    return isBlock && !isEditableBlock() && record_.children.empty() && names_.title.empty() && hasOwnText(record_);
  }

  void addRole() {
    const AtspiRoleNames names = refinedRole();
    role_ = names.role;
    add("AXRole", std::string(names.role));
    addText("AXSubrole", names.subrole);
    if (isPassword()) add("AXContainsProtectedContent", true);
  }

  bool isPassword() const { return record_.role == Role::passwordText; }

  void addNames() {
    if (role_ == "AXStaticText") {
      const bool isNamedByText = isBareText() || (record_.name.empty() && hasOwnText(record_));
      // Where children stand between the words, each piece is a child of its own.
      const bool isMixed = isNamedByText && !wordsBetweenChildren(record_, toolkit_).empty();
      if (!isMixed) addText("AXValue", isNamedByText ? record_.text->text.text : record_.name);
    } else {
      std::string_view title = names_.title;
      const bool isNamedByText = record_.role == Role::heading || isTableCell(record_.role);
      if (title.empty() && isNamedByText && record_.children.empty() && hasOwnText(record_)) {
        title = record_.text->text.text;
      }
      addText("AXTitle", title);
      if (title.empty() && record_.labelledBy) addText("AXLabel", *record_.labelledBy);
    }
    addText("AXDescription", names_.description);
    addText("AXHelp", names_.help);
    addText("AXPlaceholderValue", names_.placeholder);
    addRoleDescription();
    addWord("AXIdentifier", "accessible-id");
  }

  /// What the application says, else the bus's own word for blocks that read differently from other groups.
  void addRoleDescription() {
    if (const std::string* description = record_.attribute("roledescription")) {
      addText("AXRoleDescription", *description);
    } else if (record_.role == Role::statusBar) {
      addText("AXRoleDescription", "status bar");
    } else if (record_.role == Role::blockQuote && role_ == "AXGroup") {
      addText("AXRoleDescription", "block quote");
    }
  }

  /// The text of fields, editors and documents, with the selection.
  void addText() {
    const bool isLongText = role_ == "AXTextArea" || role_ == "AXDocument" || role_ == "AXWebArea";
    const bool isField = role_ == "AXTextField" || role_ == "AXSearchField" || role_ == "AXComboBox" ||
                         role_ == "AXIncrementor" || role_ == "AXPopUpButton";
    if (isPassword() || !record_.text || (!isLongText && !isField)) return;
    const AtspiNodeText& text = *record_.text;
    const bool isEditor = role_ == "AXTextArea";
    if (!isEditor && !isField && !hasOwnText(record_)) return;
    if (isLongText) {
      add("AXNumberOfCharacters", numberOfCharacters(text));
      element_.fullText = text.text.text;
    }
    // Of a closed list of options the text is but a mark that stands for its menu.
    if (record_.choice) return;
    if (!text.text.text.empty() && role_ != "AXIncrementor") add("AXValue", text.text.text);
    addSelection(text, isEditor || isField);
  }

  /// In UTF-16 units. Of a text that was only read in part, or of which less came than announced, what the application
  /// says remains; the capture then sees that something is missing.
  static std::int64_t numberOfCharacters(const AtspiNodeText& text) {
    const auto announced = text.characterCount;
    const auto received = static_cast<std::int64_t>(text.text.unit == AtspiTextUnit::utf16 ? text.text.utf16Length
                                                                                           : codePointCount(text.text));
    return text.text.utf16Length + std::max<std::int64_t>(announced - received, 0);
  }

  static std::int64_t codePointCount(const AtspiText& text) {
    return static_cast<std::int64_t>(
        std::ranges::count_if(text.text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
  }

  void addSelection(const AtspiNodeText& text, bool isEditable) {
    if (text.selection) {
      const ArtifactTextRange range = utf16Range(text.text, text.selection->first, text.selection->second);
      add("AXSelectedTextRange", range);
      const Utf16Index index(text.text.text);
      addText("AXSelectedText", index.substring(range.location, range.location + range.length));
    } else if (text.caret && *text.caret >= 0 && (isEditable || record_.is(AtspiState::focused))) {
      add("AXSelectedTextRange", utf16Range(text.text, *text.caret, *text.caret));
    }
  }

  std::int64_t toggleValue() const {
    if (record_.is(AtspiState::indeterminate)) return 2;
    return record_.is(AtspiState::checked) || record_.is(AtspiState::pressed) ? 1 : 0;
  }

  void addValue() {
    switch (record_.role) {
      case Role::checkBox:
      case Role::toggleButton:
      case Role::radioButton:
        if (role_ != "AXDisclosureTriangle") add("AXValue", toggleValue());
        break;
      case Role::checkMenuItem:
      case Role::radioMenuItem: add("AXChecked", toggleValue()); break;
      default:
        if (record_.choice) addText("AXValue", *record_.choice);
        if (isNamedByItsChoice(record_, toolkit_) && !(record_.text && hasOwnText(record_))) {
          addText("AXValue", record_.name);
        }
        if ((record_.is(AtspiState::checkable) || record_.isToggle) && !isPassword()) add("AXChecked", toggleValue());
        if (isTableCell(record_.role) && hasOwnText(record_) && !names_.title.empty() &&
            record_.text->text.text != names_.title) {
          // A sheet's cell is named by its place; what stands in it is no number where it is a word.
          add("AXValue", record_.text->text.text);
        } else if (record_.value && !holdsParagraphs(record_)) {
          add("AXValue", *record_.value);
        }
    }
    addWord("AXValueDescription", "valuetext");
  }

  void addStates() {
    const auto addFlag = [&](std::string_view name, unsigned state) {
      if (record_.is(state)) add(name, true);
    };
    // A tab whose label is not shown has the states of nothing; only its page is there.
    const bool isHiddenTab = record_.role == Role::pageTab && (!record_.extents || isAbsent(*record_.extents));
    if (isInteractive(record_.role) && !isTopLevelWindow(record_.role) && !isHiddenTab) {
      add("AXEnabled", record_.is(AtspiState::sensitive));
    }
    if (record_.is(AtspiState::focusable) || record_.is(AtspiState::focused)) {
      add("AXFocused", record_.is(AtspiState::focused));
    }
    if (record_.is(AtspiState::selectable)) add("AXSelected", record_.is(AtspiState::selected));
    if (record_.is(AtspiState::expandable) || record_.is(AtspiState::expanded)) {
      add("AXExpanded", record_.is(AtspiState::expanded));
    }
    addFlag("AXRequired", AtspiState::required);
    addFlag("AXModal", AtspiState::modal);
    addFlag("AXVisited", AtspiState::visited);
    addFlag("AXARIABusy", AtspiState::busy);
    addFlag("AXInvalid", AtspiState::invalidEntry);
    const std::string* hidden = record_.attribute("hidden");
    if (!record_.is(AtspiState::visible) || (hidden != nullptr && *hidden == "true")) add("AXHidden", true);
    // One toolkit does not tell what is on the screen, but what it never laid out has no size.
    const bool isLaidOut = !record_.extents || record_.extents->width > 0 || record_.extents->height > 0;
    const bool isShown = toolkit_ == AtspiToolkit::gtk4 ? isLaidOut : record_.is(AtspiState::showing);
    add("AXVisible", record_.is(AtspiState::visible) && isShown);
    if (hasRangeValue(record_.role) || record_.role == Role::splitPane) {
      if (record_.is(AtspiState::horizontal)) add("AXOrientation", std::string("horizontal"));
      if (record_.is(AtspiState::vertical)) add("AXOrientation", std::string("vertical"));
    }
    if (const std::string* popup = record_.attribute("haspopup")) {
      if (*popup != "false") addText("AXHasPopup", *popup);
    } else if (record_.is(AtspiState::hasPopup)) {
      add("AXHasPopup", std::string("true"));
    }
  }

  void addWebAttributes() {
    addWord("AXAccessKey", "keyshortcuts");
    addWord("AXDOMIdentifier", "id");
    if (const std::string* classes = record_.attribute("class")) {
      std::vector<std::string> list;
      for (const std::string_view name : splittingAtWhiteSpace(*classes)) list.emplace_back(name);
      if (!list.empty()) add("AXDOMClassList", std::move(list));
    }
    if (record_.role == Role::heading) addNumber("AXHeadingLevel", "level");
    if (record_.role == Role::treeItem) addNumber("AXDisclosureLevel", "level", -1);
    addNumber("AXARIAPosInSet", "posinset");
    addNumber("AXARIASetSize", "setsize");
    addNumber("AXARIARowCount", "rowcount");
    addNumber("AXARIAColumnCount", "colcount");
    if (const std::string* current = record_.attribute("current"); current != nullptr && *current != "false") {
      addText("AXARIACurrent", *current);
    }
    addWord("AXSortDirection", "sort");
  }

  void addLinks() {
    if (record_.uri) addText("AXURL", *record_.uri);
    for (const auto& [key, value] : record_.documentAttributes) {
      if (key != "URI" && key != "DocURL") continue;
      addText(record_.role == Role::documentWeb ? "AXURL" : "AXDocument", value);
      break;
    }
  }

  void addGeometry() {
    if (!record_.extents) return;
    if (placement_.frame) {
      addFrame(*placement_.frame);
      return;
    }
    const ArtifactRect& extents = *record_.extents;
    if (isAbsent(extents)) return;
    addFrame({.x = extents.x + placement_.origin.x,
              .y = extents.y + placement_.origin.y,
              .width = extents.width,
              .height = extents.height});
  }

  /// What toolkits give for what is not on the screen.
  static bool isAbsent(const ArtifactRect& extents) {
    constexpr double absent = -2147483648.0;
    return extents.x == absent || extents.y == absent || extents.width < 0 || extents.height < 0 ||
           extents == ArtifactRect{.x = -1, .y = -1, .width = -1, .height = -1} || extents == ArtifactRect{};
  }

  void addFrame(const ArtifactRect& frame) {
    add("AXPosition", ArtifactPoint{.x = frame.x, .y = frame.y});
    add("AXSize", ArtifactSize{.width = frame.width, .height = frame.height});
  }

  const AtspiNodeRecord& record_;
  AtspiToolkit toolkit_;
  const AtspiWindowPlacement& placement_;
  AtspiNames names_;
  std::string_view role_;
  AtspiMappedElement element_;
};

}  // namespace

const AccessibilityValue* AtspiMappedElement::attribute(std::string_view name) const {
  for (const auto& [key, value] : attributes) {
    if (key == name) return &value;
  }
  return nullptr;
}

std::optional<ArtifactRect> AtspiMappedElement::frame() const {
  const auto* position = attribute("AXPosition");
  const auto* size = attribute("AXSize");
  if (position == nullptr || size == nullptr) return std::nullopt;
  const auto& point = std::get<ArtifactPoint>(*position);
  const auto& extent = std::get<ArtifactSize>(*size);
  return ArtifactRect{.x = point.x, .y = point.y, .width = extent.width, .height = extent.height};
}

AtspiMappedElement mapElement(const AtspiNodeRecord& record, AtspiToolkit toolkit,
                              const AtspiWindowPlacement& placement) {
  return ElementMapper(record, toolkit, placement).map();
}

}  // namespace quillo
