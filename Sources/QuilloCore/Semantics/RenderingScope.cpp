#include "QuilloCore/Semantics/RenderingScope.h"

#include <algorithm>
#include <cstddef>

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

bool isTrue(const std::optional<bool>& flag) {
  return flag.value_or(false);
}

bool hasArea(const InterfaceElement& element) {
  return element.bounds && element.bounds->width > 0 && element.bounds->height > 0;
}

bool isOutOfSight(const InterfaceElement& element) {
  return element.visibility == InterfaceVisibility::offscreen || (element.bounds && !hasArea(element));
}

/// The one web content that every focus inside web content belongs to; none when there are several or no focus.
ElementIndex focusedWebContent(const ElementForest& forest) {
  std::vector<ElementIndex> outermostArea(forest.size(), noElement);
  ElementIndex focusedArea = noElement;
  for (const ElementIndex element : forest.preorder()) {
    const ElementIndex parent = forest.parent(element);
    ElementIndex area = parent == noElement ? noElement : outermostArea[parent];
    if (area == noElement && forest[element].role == webArea) area = element;
    outermostArea[element] = area;
    if (area == noElement || !isTrue(forest[element].state.focused)) continue;
    if (focusedArea != noElement && focusedArea != area) return noElement;
    focusedArea = area;
  }
  return focusedArea;
}

/// Navigation that nobody sees or uses: out of sight, and neither focused, selected nor visible anywhere inside.
class UnseenNavigation {
 public:
  explicit UnseenNavigation(const ElementForest& forest) : forest_(forest), noticedBefore_(forest.size() + 1, 0) {
    const auto order = forest.preorder();
    for (std::size_t i = 0; i < order.size(); ++i) {
      const InterfaceElement& element = forest[order[i]];
      const bool isSeen = element.visibility == InterfaceVisibility::visible && hasArea(element);
      const bool isNoticed = isTrue(element.state.focused) || isTrue(element.state.selected) || isSeen;
      noticedBefore_[i + 1] = noticedBefore_[i] + static_cast<std::size_t>(isNoticed);
    }
  }

  bool isRoot(ElementIndex element) const {
    if (forest_[element].role != navigation || !isOutOfSight(forest_[element])) return false;
    return noticedBefore_[forest_.position(element)] == noticedBefore_[forest_.subtreeEnd(element)];
  }

 private:
  const ElementForest& forest_;
  std::vector<std::size_t> noticedBefore_;  // in pre-order
};

}  // namespace

RenderingScope computeRenderingScope(const ElementForest& forest) {
  RenderingScope scope;
  scope.includedElements = ElementIndexSet(forest.size());
  const auto total = static_cast<std::int64_t>(forest.size());
  if (forest.root() == noElement) {
    scope.omittedOutOfScopeElementCount = total;
    return scope;
  }
  const ElementIndex area = focusedWebContent(forest);
  if (area == noElement) {
    for (const ElementIndex element : forest.preorder()) scope.includedElements.insert(element);
    return scope;
  }
  for (ElementIndex element = area; element != noElement; element = forest.parent(element)) {
    scope.includedElements.insert(element);
  }
  const UnseenNavigation unseen(forest);
  const auto order = forest.preorder();
  for (std::size_t i = forest.position(area); i < forest.subtreeEnd(area);) {
    const std::size_t end = unseen.isRoot(order[i]) ? forest.subtreeEnd(order[i]) : i;
    for (; i < end; ++i) scope.omittedNavigationElements.push_back(order[i]);
    if (i < forest.subtreeEnd(area) && !unseen.isRoot(order[i])) scope.includedElements.insert(order[i++]);
  }
  scope.omittedNavigationElementCount = static_cast<std::int64_t>(scope.omittedNavigationElements.size());
  scope.omittedOutOfScopeElementCount =
      total - static_cast<std::int64_t>(scope.includedElements.size()) - scope.omittedNavigationElementCount;
  return scope;
}

}  // namespace quillo
