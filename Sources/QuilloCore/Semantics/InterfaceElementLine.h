#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// What the element is called on its line: "heading level 2", "container", "button (split button)".
std::string displayRole(const InterfaceElement& element);

/// "disabled", "focused" … in their fixed order, without "editable" and "hidden".
std::vector<std::string_view> stateWords(const InterfaceElement& element);

/// A value as it stands on a line: text in quotation marks, numbers with at most four decimals, <redacted>.
std::string renderedValue(const AccessibilityAttributeValue& value);

/// The names of the actions that say more than the role does, fit to be joined with commas.
std::vector<std::string> meaningfulActions(const InterfaceElement& element);

/// The role description when it says more than the role; empty otherwise.
std::string_view meaningfulRoleDescription(const InterfaceElement& element);

/// Whether the line says anything beside the role: a state, a value that is no string, an action, a role description.
bool saysMoreThanItsTexts(const InterfaceElement& element);

struct ElementLineOptions {
  bool isEditable = false;                      ///< a control that absorbed the label beside it
  std::optional<std::string_view> printedName;  ///< what stands for the primary text; empty for nothing
};

/// The element on one line, without indentation and dash:
///
///     button (disabled) "Reply", actions: archive
///     text field (focused, editable) "Name", value: "Ada"
std::string elementLine(const InterfaceElement& element, std::string_view primary, ElementLineOptions options = {});

/// Whether the element is a row that prints its cells' texts.
bool hasRowReference(const InterfaceElement& element);

/// Whether the text is one of such a row's cells, or all of them together.
bool rowHolds(const InterfaceElement& element, std::string_view text);

/// Such a row on one line: `row (selected): "a", "b", ""`.
std::string rowReference(const InterfaceElement& element);

}  // namespace quillo
