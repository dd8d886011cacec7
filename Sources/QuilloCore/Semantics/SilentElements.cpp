#include "QuilloCore/Semantics/SilentElements.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

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

/// The lines that would be printed of a subtree, counted as far as it matters.
struct LineCount {
  std::size_t lines = 0;
  ElementIndex onlyLine = noElement;  // who prints it when there is one
};

class IdleContainers {
 public:
  IdleContainers(const RenderContext& context, RenderPlan& plan)
      : context_(context), forest_(context.forest()), plan_(plan), counts_(forest_.size()) {}

  void run() {
    for (std::size_t i = forest_.size(); i-- > 0;) {
      const ElementIndex element = forest_.preorder()[i];
      if (context_.isInScope(element)) counts_[element] = countOf(element);
    }
  }

 private:
  LineCount countOf(ElementIndex element) {
    if (plan_.emptyTabularRowIDs.contains(element)) return {};
    const LineCount inside = countInside(element);
    if (plan_.isSilent(element)) return inside;
    const bool isAroundContainer = inside.onlyLine != noElement && isAnonymousContainer(inside.onlyLine);
    if (isAroundContainer && !isAnonymousContainer(element)) {
      plan_.silentElementIDs.insert(inside.onlyLine);  // its parent holds the same lines together
      return {1, element};
    }
    const bool isIdle = (inside.lines == 0 && isAnonymousContainer(element)) ||
                        (inside.lines == 1 && (isAnonymousContainer(element) || isAnonymousItem(element)));
    if (!isIdle || forest_.parent(element) == noElement) return {1, element};
    plan_.silentElementIDs.insert(element);
    return inside;
  }

  LineCount countInside(ElementIndex element) const {
    LineCount inside;
    for (const ElementForest::Child child : forest_.children(element)) {
      const LineCount count = child.element == noElement ? LineCount{1, noElement} : counts_[child.element];
      inside.lines += count.lines;
      inside.onlyLine = inside.lines == 1 && count.lines == 1 ? count.onlyLine
                        : inside.lines == 1                   ? inside.onlyLine
                                                              : noElement;
    }
    return inside;
  }

  /// The list around it says that what stands in it are items.
  bool isAnonymousItem(ElementIndex index) const {
    const ElementIndex parent = forest_.parent(index);
    return context_[index].role == listItem && parent != noElement && context_[parent].role == list &&
           !plan_.isSilent(parent) && isNameless(index);
  }

  bool isAnonymousContainer(ElementIndex index) const {
    const InterfaceSemanticRole role = context_[index].role;
    return (role == section || role == group || role == unknown) && isNameless(index);
  }

  bool isNameless(ElementIndex index) const {
    return plan_.printedName(index, context_.primaryText(index)).empty() && saysNothingButName(context_, plan_, index);
  }

  const RenderContext& context_;
  const ElementForest& forest_;
  RenderPlan& plan_;
  std::vector<LineCount> counts_;
};

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

void silenceIdleContainers(const RenderContext& context, RenderPlan& plan) {
  IdleContainers(context, plan).run();
}

}  // namespace quillo
