#include "QuilloCore/Semantics/InterfaceActions.h"

#include <set>

#include "QuilloCore/Support/GraphemeClusters.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr std::int64_t maximumActionNameLength = 80;

bool hasLineBreak(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = nextCodePoint(text, position);
    if ((c >= U'\n' && c <= U'\r') || c == U'\u0085' || c == U'\u2028' || c == U'\u2029') return true;
  }
  return false;
}

std::vector<InterfaceAction> inferred(std::initializer_list<std::string_view> names) {
  std::vector<InterfaceAction> actions;
  for (const std::string_view name : names) actions.push_back({std::string(name), InterfaceActionSource::inferred});
  return actions;
}

}  // namespace

std::optional<std::string> normalizedActionName(std::string_view accessibilityName) {
  const std::string text = normalizingLineBreaks(accessibilityName);
  std::string_view name = trimmingWhiteSpace(text);
  if (name.empty() || hasLineBreak(name) || countGraphemeClusters(name) > maximumActionNameLength) return std::nullopt;
  if (name.size() >= 3 && name.starts_with("AX")) name.remove_prefix(2);
  // The well-known names ("Press", "ShowMenu") differ from ours by their first letter alone, like all others.
  return lowercasingFirstLetter(name);
}

std::vector<InterfaceAction> listedActions(std::span<const std::string> accessibilityNames) {
  std::set<std::string> names;
  for (const std::string& accessibilityName : accessibilityNames) {
    if (auto name = normalizedActionName(accessibilityName)) names.insert(std::move(*name));
  }
  std::vector<InterfaceAction> actions;
  actions.reserve(names.size());
  for (const std::string& name : names) actions.push_back({name, InterfaceActionSource::accessibility});
  return actions;
}

std::vector<InterfaceAction> inferredActions(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  switch (role) {
    case tab:
    case button:
    case disclosure:
    case link:
    case menuItem: return inferred({"press"});
    case textField:
    case textArea:
    case searchField: return inferred({"edit", "focus"});
    case checkbox:
    case switchControl: return inferred({"toggle"});
    case radioButton:
    case listItem:
    case treeItem: return inferred({"select"});
    case comboBox: return inferred({"edit", "showMenu"});
    case popUpButton: return inferred({"showMenu"});
    case slider:
    case stepper: return inferred({"decrement", "increment"});
    default: return {};
  }
}

}  // namespace quillo
