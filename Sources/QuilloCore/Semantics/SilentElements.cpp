#include "QuilloCore/Semantics/SilentElements.h"

#include <cstddef>
#include <string_view>

#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

bool isBullet(std::string_view text) {
  static constexpr std::u32string_view bullets = U"•◦▪▫‣⁃●○■□–-*·";
  text = trimmingWhiteSpace(text);
  std::size_t position = 0;
  return !text.empty() && bullets.contains(nextCodePoint(text, position)) && position == text.size();
}

}  // namespace

void silenceOrnaments(const RenderContext& context, RenderPlan& plan) {
  for (const ElementIndex index : context.forest().preorder()) {
    if (!context.isInScope(index)) continue;
    const InterfaceElement& element = context[index];
    const bool isIndicator = element.role == scrollBar || element.role == valueIndicator;
    if (isIndicator && context.primaryText(index).empty() && saysNothingButName(context, plan, index))
      plan.silentElementIDs.insert(index);
    const auto children = context.forest().children(index);
    if (element.role != listItem || children.size() < 2 || children.front().element == noElement) continue;
    const ElementIndex marker = children.front().element;
    if (context.isPlainTextLeaf(marker) && isBullet(context.primaryText(marker))) plan.silentElementIDs.insert(marker);
  }
}

}  // namespace quillo
