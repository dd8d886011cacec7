#include "QuilloCore/Semantics/InterfaceRetention.h"

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

bool isTrue(const std::optional<bool>& flag) {
  return flag.value_or(false);
}

bool hasValue(const InterfaceElement& element) {
  if (!element.value) return false;
  const auto* text = std::get_if<std::string>(&*element.value);
  return text == nullptr || !trimmingWhiteSpace(*text).empty();
}

bool isEmptyTextImplementationNode(const InterfaceElement& element) {
  return !hasText(element) && !isTrue(element.state.focused) && !isTrue(element.state.selected) &&
         element.actions.empty() && element.identifiers.empty() && !element.isProtected;
}

bool hasTellingState(const InterfaceElementState& state) {
  return isTrue(state.focused) || isTrue(state.selected) || state.expanded || state.checked || isTrue(state.modal) ||
         isTrue(state.busy) || isTrue(state.invalid) || isTrue(state.edited);
}

bool isInteractive(InterfaceSemanticRole role) {
  switch (role) {
    case tab:
    case textField:
    case textArea:
    case searchField:
    case button:
    case disclosure:
    case link:
    case checkbox:
    case radioButton:
    case switchControl:
    case listItem:
    case treeItem:
    case menuItem:
    case comboBox:
    case popUpButton:
    case slider:
    case stepper: return true;
    default: return false;
  }
}

}  // namespace

bool hasText(const InterfaceElement& element) {
  return element.label || hasValue(element) || element.content || element.description || element.help ||
         element.placeholder;
}

bool hasIndependentState(const InterfaceElementState& state) {
  return isTrue(state.focused) || isTrue(state.selected) || state.expanded || state.checked || state.enabled == false ||
         isTrue(state.required) || isTrue(state.modal) || isTrue(state.busy) || isTrue(state.invalid) ||
         isTrue(state.edited);
}

bool hasIndependentRowState(const InterfaceElement& element) {
  return hasIndependentState(element.state) || !element.actions.empty() || !element.identifiers.empty();
}

bool isBareContainer(const InterfaceElement& element) {
  const bool isContainer = element.role == group || element.role == section || element.role == unknown;
  return isContainer && !hasIndependentRowState(element) && !hasText(element);
}

bool shouldRetain(const InterfaceElement& element, std::size_t retainedChildCount, bool isSourceRoot) {
  const InterfaceSemanticRole role = element.role;
  if (role == application || role == window || role == dialog || role == sheet) return true;
  if (role == text && isEmptyTextImplementationNode(element)) return false;
  if (hasTellingState(element.state) || isInteractive(role) || hasText(element)) return true;
  if (!element.actions.empty() || !element.identifiers.empty() || !element.properties->isEmpty() ||
      element.isProtected) {
    return true;
  }
  switch (role) {
    case text:
    case image:
    case icon:
    case unknown: return false;
    case section:
    case group: return retainedChildCount >= 2 || isSourceRoot;
    default: return retainedChildCount > 0;  // containers, headings, rows, cells, indicators
  }
}

}  // namespace quillo
