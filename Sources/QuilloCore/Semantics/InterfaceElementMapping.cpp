#include "QuilloCore/Semantics/InterfaceElementMapping.h"

#include <algorithm>
#include <string>
#include <utility>

#include "QuilloCore/Semantics/InterfaceActions.h"
#include "QuilloCore/Semantics/InterfaceAttributeReading.h"
#include "QuilloCore/Semantics/InterfaceContentRange.h"
#include "QuilloCore/Semantics/InterfaceRoleMapping.h"
#include "QuilloCore/Semantics/InterfaceVisibilityClassification.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;

void addIdentifier(InterfaceElement& element, const AccessibilityNode& node, InterfaceIdentifierKind kind,
                   std::string_view attribute) {
  auto text = readText(node, attribute);
  // Names that a toolkit generates change from run to run.
  if (text && !text->starts_with("_NS:")) element.identifiers.push_back({kind, std::move(*text)});
}

std::optional<bool> focusState(const AccessibilityNode& node, const InterfaceMappingContext& context) {
  const std::optional<bool> exposed = readBoolean(node, "AXFocused");
  if (!context.focusedNodeID) return exposed;
  if (node.id == *context.focusedNodeID) return true;
  // A stale "focused" elsewhere must not yield a second focused element.
  return exposed == false ? exposed : std::nullopt;
}

std::optional<InterfaceCheckState> readCheckState(const AccessibilityNode& node, Role role) {
  if (const auto* checked = node.attribute("AXChecked")) return checkState(*checked);
  const bool isToggle = role == Role::checkbox || role == Role::radioButton || role == Role::switchControl;
  const auto* value = isToggle ? node.attribute("AXValue") : nullptr;
  return value == nullptr ? std::nullopt : checkState(*value);
}

InterfaceElementState makeState(const AccessibilityNode& node, Role role, const InterfaceMappingContext& context) {
  InterfaceElementState state;
  state.enabled = readBoolean(node, "AXEnabled");
  state.focused = focusState(node, context);
  state.selected = readBoolean(node, "AXSelected");
  state.expanded = readBoolean(node, "AXExpanded");
  state.checked = readCheckState(node, role);
  state.required = readBoolean(node, "AXRequired");
  state.modal = readBoolean(node, "AXModal");
  state.visited = readBoolean(node, "AXVisited");
  state.busy = readBoolean(node, "AXARIABusy");
  state.invalid = readBoolean(node, "AXInvalid");
  state.edited = readBoolean(node, "AXEdited");
  return state;
}

InterfaceElementProperties makeProperties(const AccessibilityNode& node) {
  InterfaceElementProperties properties;
  properties.roleDescription = readText(node, "AXRoleDescription");
  properties.headingLevel = readInteger(node, "AXHeadingLevel");
  properties.disclosureLevel = readInteger(node, "AXDisclosureLevel");
  properties.index = readInteger(node, "AXIndex");
  properties.orientation = readText(node, "AXOrientation");
  properties.current = readText(node, "AXARIACurrent");
  properties.hasPopup = readText(node, "AXHasPopup");
  properties.url = readText(node, "AXURL");
  properties.document = readText(node, "AXDocument");
  properties.filename = readText(node, "AXFilename");
  properties.domClasses = readTexts(node, "AXDOMClassList");
  properties.positionInSet = readInteger(node, "AXARIAPosInSet");
  properties.setSize = readInteger(node, "AXARIASetSize");
  properties.rowCount = readInteger(node, "AXARIARowCount");
  properties.columnCount = readInteger(node, "AXARIAColumnCount");
  if (node.isProtected) return properties;
  // These four tell of the text itself or of its length.
  properties.valueDescription = readText(node, "AXValueDescription");
  properties.selectedText = readText(node, "AXSelectedText");
  properties.selectedTextRange = readRange(node, "AXSelectedTextRange");
  properties.visibleTextRange = readRange(node, "AXVisibleCharacterRange");
  return properties;
}

bool carriesContent(Role role) {
  return role == Role::textArea || role == Role::document || role == Role::webArea;
}

void mapContent(InterfaceElement& element, InterfaceElementProperties& properties, const AccessibilityNode& node) {
  element.content = readText(node, "AXFullText");
  if (!element.content) return;
  const auto& raw = std::get<std::string>(*node.attribute("AXFullText"));
  if (raw.size() == element.content->size()) return;
  for (auto* range : {&properties.selectedTextRange, &properties.visibleTextRange}) {
    if (*range) *range = rangeInCleanText(raw, **range);
  }
}

}  // namespace

void mapElement(InterfaceElement& element, const AccessibilityNode& node, std::size_t retainedChildCount,
                const InterfaceMappingContext& context) {
  element.id = "element-" + std::to_string(node.id);
  element.sourceNodeID = node.id;
  element.accessibilityRole = node.role;
  element.accessibilitySubrole = node.subrole;
  element.role = semanticRole(node.role, node.subrole);

  addIdentifier(element, node, InterfaceIdentifierKind::accessibility, "AXIdentifier");
  addIdentifier(element, node, InterfaceIdentifierKind::dom, "AXDOMIdentifier");
  addIdentifier(element, node, InterfaceIdentifierKind::accessKey, "AXAccessKey");

  element.label = readText(node, {"AXTitle", "AXLabel"});
  element.description = readText(node, "AXDescription");
  element.help = readText(node, "AXHelp");
  element.placeholder = readText(node, "AXPlaceholderValue");
  const bool mayBeNamedByIdentifier =
      element.role == Role::table || element.role == Role::tree || element.role == Role::list;
  if (!element.label && mayBeNamedByIdentifier) {
    const auto named =
        std::ranges::find(element.identifiers, InterfaceIdentifierKind::accessibility, &InterfaceIdentifier::kind);
    if (named != element.identifiers.end()) element.label = named->value;
  }

  const bool isSection = element.label || element.description || retainedChildCount > 1 || !element.identifiers.empty();
  if (node.role == "AXGroup" && isSection) element.role = Role::section;

  element.state = makeState(node, element.role, context);
  if (const auto* actions = node.attribute("AXActions")) {
    if (const auto* names = std::get_if<std::vector<std::string>>(actions)) element.actions = listedActions(*names);
  }
  if (element.actions.empty() && context.inferActions) element.actions = inferredActions(element.role);

  element.bounds = node.frame;
  element.visibility = classifyVisibility(node, context.viewport);
  element.isProtected = node.isProtected;
  InterfaceElementProperties properties = makeProperties(node);
  if (!node.isProtected) {
    if (const auto* value = node.attribute("AXValue")) element.value = *value;
    if (carriesContent(element.role)) mapContent(element, properties, node);
  }
  element.properties = std::move(properties);
}

}  // namespace quillo
