#include "QuilloCore/Semantics/SilentElements.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

bool isBullet(std::string_view text) {
  static constexpr std::u32string_view bullets = U"•◦▪▫‣⁃●○■□–-*·▸▾▶▼";
  text = trimmingWhiteSpace(text);
  std::size_t position = 0;
  return !text.empty() && bullets.contains(nextCodePoint(text, position)) && position == text.size();
}

/// A scroll bar or value indicator that shows neither a state nor a value; its name alone says nothing of the window.
bool isIdleIndicator(const InterfaceElement& element) {
  if (element.role != scrollBar && element.role != valueIndicator) return false;
  const bool hasValue =
      element.value && (!std::holds_alternative<std::string>(*element.value) || !printableStringValue(element).empty());
  return !hasValue && !element.isProtected && !element.content && stateWords(element).empty() &&
         meaningfulActions(element).empty();
}

}  // namespace

void silenceOrnaments(const RenderContext& context, RenderPlan& plan) {
  for (const ElementIndex index : context.forest().preorder()) {
    if (!context.isInScope(index)) continue;
    const InterfaceElement& element = context[index];
    if (isIdleIndicator(element)) plan.silentElementIDs.insert(index);
    const auto children = context.forest().children(index);
    const bool hasMarker = element.role == listItem || element.role == disclosure;
    if (!hasMarker || children.size() < 2 || children.front().element == noElement) continue;
    const ElementIndex marker = children.front().element;
    if (context.isPlainTextLeaf(marker) && isBullet(context.primaryText(marker))) plan.silentElementIDs.insert(marker);
  }
}

}  // namespace quillo
