#include "QuilloCore/Semantics/InterfaceElementLine.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/InterfaceRoleNames.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/NumberFormatting.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// What stands between the parts of a line; a bare name must not hold any of it.
constexpr std::string_view linePunctuation = "\"(),:[]";

bool isContainer(InterfaceSemanticRole role) {
  return role == section || role == group || role == unknown;
}

/// Roles that say less than their description, which then stands alone.
bool yieldsToRoleDescription(InterfaceSemanticRole role) {
  switch (role) {
    case section:
    case group:
    case textField:
    case textArea:
    case radioButton:
    case listItem:
    case row:
    case treeItem:
    case image:
    case icon:
    case unknown: return true;
    default: return false;
  }
}

bool hasAnyText(const InterfaceElement& element) {
  const auto isPresent = [](const auto& text) { return text && isPrintable(*text); };
  const auto* string = element.value ? std::get_if<std::string>(&*element.value) : nullptr;
  const bool hasValue = element.value && (string == nullptr || isPrintable(*string));
  return isPresent(element.label) || hasValue || isPresent(element.content) || isPresent(element.description) ||
         isPresent(element.help) || isPresent(element.placeholder);
}

/// Lower-cased, without white space and hyphens, so that "Pop-up button" and "popup button" are one.
std::string folded(std::string_view text) {
  std::string result = lowercased(text);
  std::erase(result, '-');
  std::string joined;
  for (const std::string_view piece : splittingAtWhiteSpace(result)) joined += piece;
  return joined;
}

bool isGenericRoleWord(std::string_view foldedText) {
  static constexpr std::array<std::string_view, 5> words = {"group", "element", "unknown", "text", "statictext"};
  return std::ranges::find(words, foldedText) != words.end();
}

/// Actions that every reader expects of every element, whatever it is.
bool isStandardAction(std::string_view name) {
  static constexpr std::array<std::string_view, 6> names = {"showMenu", "showContextMenu", "confirm", "raise", "pick",
                                                            "focus"};
  return std::ranges::find(names, name) != names.end() || name.starts_with("scroll");
}

bool isExpectedToBePressed(InterfaceSemanticRole role) {
  switch (role) {
    case group:
    case section:
    case image:
    case icon:
    case text:
    case heading:
    case row:
    case cell:
    case unknown: return false;
    default: return true;
  }
}

/// The actions that follow from a role.
bool followsFromRole(std::string_view name, InterfaceSemanticRole role) {
  if (name == "press") return isExpectedToBePressed(role);
  if (name == "edit") return role == textField || role == textArea || role == searchField || role == comboBox;
  if (name == "toggle") return role == checkbox || role == switchControl;
  if (name == "select") return role == radioButton || role == listItem || role == treeItem;
  if (name == "increment" || name == "decrement") return role == slider || role == stepper || role == scrollBar;
  return false;
}

std::string stringList(const std::vector<std::string>& texts) {
  std::vector<std::string> pieces;
  pieces.reserve(texts.size());
  for (const std::string& text : texts) pieces.push_back(quoted(text));
  return fmt::format("{}", fmt::join(pieces, ", "));
}

struct ValueRendering {
  std::string operator()(const std::string& text) const { return quoted(text); }
  std::string operator()(bool flag) const { return flag ? "true" : "false"; }
  std::string operator()(std::int64_t integer) const { return fmt::format("{}", integer); }
  std::string operator()(double number) const { return formatNumber(number); }
  std::string operator()(const ArtifactRect& rect) const {
    return fmt::format("{{x:{}, y:{}, width:{}, height:{}}}", formatNumber(rect.x), formatNumber(rect.y),
                       formatNumber(rect.width), formatNumber(rect.height));
  }
  std::string operator()(const ArtifactPoint& point) const {
    return fmt::format("{{x:{}, y:{}}}", formatNumber(point.x), formatNumber(point.y));
  }
  std::string operator()(const ArtifactSize& size) const {
    return fmt::format("{{width:{}, height:{}}}", formatNumber(size.width), formatNumber(size.height));
  }
  std::string operator()(const ArtifactTextRange& range) const {
    return fmt::format("{{location:{}, length:{}}}", range.location, range.length);
  }
  std::string operator()(const std::vector<std::string>& texts) const { return "[" + stringList(texts) + "]"; }
  std::string operator()(const RedactedValue&) const { return "<redacted>"; }
};

/// The value as the line prints it; empty for none. A protected element shows at most that its value was withheld.
std::string valueOnLine(const InterfaceElement& element, std::string_view primary) {
  if (!element.value) return {};
  const bool isWithheld = std::holds_alternative<RedactedValue>(*element.value);
  if (element.isProtected && !isWithheld) return {};
  if (const auto* text = std::get_if<std::string>(&*element.value)) {
    if (!printsStringValue(element, primary) || hasLineBreak(*text)) return {};
  }
  return renderedValue(*element.value);
}

void appendWords(std::string& line, const InterfaceElement& element, bool isEditable) {
  std::vector<std::string_view> words = stateWords(element);
  if (isEditable) words.emplace_back("editable");
  if (element.visibility == InterfaceVisibility::hidden) words.emplace_back("hidden");
  if (!words.empty()) fmt::format_to(std::back_inserter(line), " ({})", fmt::join(words, ", "));
}

void appendActions(std::string& line, const InterfaceElement& element) {
  const std::vector<std::string> actions = meaningfulActions(element);
  if (!actions.empty()) fmt::format_to(std::back_inserter(line), ", actions: {}", fmt::join(actions, ", "));
}

}  // namespace

std::string_view meaningfulRoleDescription(const InterfaceElement& element) {
  const auto& description = element.properties->roleDescription;
  if (!description || !isPrintable(*description)) return {};
  const std::string text = folded(*description);
  if (isGenericRoleWord(text) || text == folded(roleName(element.role)) || text == folded(element.accessibilityRole)) {
    return {};
  }
  return *description;
}

std::string displayRole(const InterfaceElement& element) {
  const std::string name(roleName(element.role));
  if (element.role == heading && element.properties->headingLevel) {
    return fmt::format("heading level {}", *element.properties->headingLevel);
  }
  const std::string_view description = meaningfulRoleDescription(element);
  if (description.empty()) {
    const bool isBareContainer = isContainer(element.role) && element.childIDs.size() >= 2 && !hasAnyText(element);
    return isBareContainer ? "container" : name;
  }
  const std::string printed = bareOrQuoted(description, linePunctuation);
  const bool isBare = !printed.starts_with('"');
  return isBare && yieldsToRoleDescription(element.role) ? printed : fmt::format("{} ({})", name, printed);
}

std::vector<std::string_view> stateWords(const InterfaceElement& element) {
  std::vector<std::string_view> words;
  const InterfaceElementState& state = element.state;
  const auto add = [&](bool holds, std::string_view word) {
    if (holds) words.push_back(word);
  };
  add(state.enabled == false, "disabled");
  add(state.focused == true, "focused");
  add(state.selected == true, "selected");
  add(state.expanded == true, "expanded");
  add(state.expanded == false, "collapsed");
  add(state.checked == InterfaceCheckState::on, "checked");
  add(state.checked == InterfaceCheckState::off, "unchecked");
  add(state.checked == InterfaceCheckState::mixed, "partially checked");
  add(state.required == true, "required");
  add(state.modal == true, "modal");
  add(state.visited == true, "visited");
  add(state.busy == true, "busy");
  add(state.invalid == true, "invalid");
  add(state.edited == true, "edited");
  return words;
}

std::string renderedValue(const AccessibilityAttributeValue& value) {
  return std::visit(ValueRendering{}, value);
}

std::vector<std::string> meaningfulActions(const InterfaceElement& element) {
  std::vector<std::string> names;
  for (const InterfaceAction& action : element.actions) {
    if (action.source == InterfaceActionSource::inferred || !hasVisibleText(action.name)) continue;
    if (isStandardAction(action.name) || followsFromRole(action.name, element.role)) continue;
    if (element.state.expanded && (action.name == "expand" || action.name == "collapse")) continue;
    names.push_back(bareOrQuoted(action.name, linePunctuation));
  }
  return names;
}

bool saysMoreThanItsTexts(const InterfaceElement& element) {
  const bool hasTypedValue = element.value && !std::holds_alternative<std::string>(*element.value);
  return !stateWords(element).empty() || element.visibility == InterfaceVisibility::hidden || hasTypedValue ||
         !meaningfulActions(element).empty() || !meaningfulRoleDescription(element).empty();
}

std::string elementLine(const InterfaceElement& element, std::string_view primary, ElementLineOptions options) {
  std::string line = displayRole(element);
  appendWords(line, element, options.isEditable);
  const std::string_view name = options.printedName.value_or(primary);
  if (!name.empty()) line.append(" ").append(quoted(name));
  if (const std::string value = valueOnLine(element, primary); !value.empty()) line.append(", value: ").append(value);
  appendActions(line, element);
  return line;
}

bool hasRowReference(const InterfaceElement& element) {
  const bool isRow = element.role == row || element.role == treeItem;
  return isRow && !element.isProtected && element.properties->rowValues && !element.properties->rowValues->empty();
}

bool rowHolds(const InterfaceElement& element, std::string_view text) {
  const std::vector<std::string>& values = *element.properties->rowValues;
  return std::ranges::any_of(values, [&](const std::string& value) { return agreeButForWhiteSpace(value, text); }) ||
         agreeButForWhiteSpace(fmt::format("{}", fmt::join(values, " ")), text);
}

std::string rowReference(const InterfaceElement& element) {
  std::string line = displayRole(element);
  appendWords(line, element, false);
  line.append(": ").append(stringList(*element.properties->rowValues));
  const bool isCellText = rowHolds(element, printableStringValue(element));
  if (const std::string value = valueOnLine(element, {}); !value.empty() && !isCellText) {
    line.append(", value: ").append(value);
  }
  appendActions(line, element);
  return line;
}

}  // namespace quillo
