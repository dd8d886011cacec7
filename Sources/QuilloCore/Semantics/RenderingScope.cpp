#include "QuilloCore/Semantics/RenderingScope.h"

#include <algorithm>
#include <cstddef>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"

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

/// What opens a menu beside the menus themselves.
bool mayOpenMenu(InterfaceSemanticRole role) {
  return role == button || role == checkbox || role == popUpButton || role == disclosure;
}

/// A closed list of choices that shows the one that was made. Whatever a toolkit says of the others, they are away.
bool showsItsChoice(const InterfaceElement& element) {
  const bool isChoice = element.role == popUpButton || element.role == comboBox;
  return isChoice && element.state.expanded == false && !printableStringValue(element).empty();
}

/// Ways to go somewhere that nobody sees or uses: navigation out of sight, a menu bar without area (of two that an
/// application keeps, the one that the desktop's own took the place of), and what is inside a closed menu.
class UnseenNavigation {
 public:
  explicit UnseenNavigation(const ElementForest& forest)
      : forest_(forest),
        focusedBefore_(forest.size() + 1, 0),
        usedBefore_(forest.size() + 1, 0),
        noticedBefore_(forest.size() + 1, 0),
        openBefore_(forest.size() + 1, 0) {
    const auto order = forest.preorder();
    for (std::size_t i = 0; i < order.size(); ++i) {
      const InterfaceElement& element = forest[order[i]];
      const bool isFocused = isTrue(element.state.focused);
      const bool isInUse = isFocused || isTrue(element.state.selected);
      const bool isSeen = element.visibility == InterfaceVisibility::visible && hasArea(element);
      const bool isNoticed = isInUse || isSeen;
      focusedBefore_[i + 1] = focusedBefore_[i] + static_cast<std::size_t>(isFocused);
      usedBefore_[i + 1] = usedBefore_[i] + static_cast<std::size_t>(isInUse);
      noticedBefore_[i + 1] = noticedBefore_[i] + static_cast<std::size_t>(isNoticed);
      const bool isSaidAway =
          element.visibility == InterfaceVisibility::offscreen || element.visibility == InterfaceVisibility::hidden;
      openBefore_[i + 1] = openBefore_[i] + static_cast<std::size_t>(isNoticed || !isSaidAway);
    }
  }

  /// Navigation that is out of sight as a whole: neither focused, selected nor visible anywhere inside.
  bool isUnseenNavigation(ElementIndex element) const {
    return forest_[element].role == navigation && isOutOfSight(forest_[element]) &&
           noticedBefore_[forest_.position(element)] == noticedBefore_[forest_.subtreeEnd(element)];
  }

  bool isReplacedMenuBar(ElementIndex element) const {
    return forest_[element].role == menuBar && forest_[element].bounds && !hasArea(forest_[element]) &&
           usedBefore_[forest_.position(element)] == usedBefore_[forest_.subtreeEnd(element)];
  }

  /// A menu of which nothing but its name is to be seen.
  bool isClosedMenu(ElementIndex element) const {
    return forest_[element].role == menu && isAway(forest_.position(element) + 1, forest_.subtreeEnd(element));
  }

  /// A part of a closed menu that hangs on a button, without a menu around it, or of a closed list of choices.
  bool isInClosedButtonMenu(ElementIndex element) const {
    const InterfaceSemanticRole role = forest_[element].role;
    const ElementIndex parent = forest_.parent(element);
    if ((role != menu && role != menuItem) || parent == noElement) return false;
    const std::size_t begin = forest_.position(element);
    const std::size_t end = forest_.subtreeEnd(element);
    return (showsItsChoice(forest_[parent]) && focusedBefore_[begin] == focusedBefore_[end]) ||
           (mayOpenMenu(forest_[parent].role) && isAway(begin, end));
  }

 private:
  /// Nothing of the stretch of the pre-order is noticed, and the application says of all that it is away.
  bool isAway(std::size_t begin, std::size_t end) const { return openBefore_[begin] == openBefore_[end]; }

  const ElementForest& forest_;
  // In pre-order: how many elements up to there are focused, in use (focused or selected), noticed (in use or seen),
  // and not said to be away by the application.
  std::vector<std::size_t> focusedBefore_;
  std::vector<std::size_t> usedBefore_;
  std::vector<std::size_t> noticedBefore_;
  std::vector<std::size_t> openBefore_;
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
  const UnseenNavigation unseen(forest);
  const auto order = forest.preorder();
  // Includes the stretch of the pre-order but for closed menus and replaced menu bars, and unseen navigation where
  // `narrows`.
  const auto include = [&](std::size_t begin, std::size_t end, bool narrows) {
    const auto omitUntil = [&](std::size_t& position, std::size_t stop) {
      while (position < stop) scope.omittedNavigationElements.push_back(order[position++]);
    };
    for (std::size_t i = begin; i < end;) {
      const ElementIndex element = order[i];
      if ((narrows && unseen.isUnseenNavigation(element)) || unseen.isReplacedMenuBar(element) ||
          unseen.isInClosedButtonMenu(element)) {
        omitUntil(i, forest.subtreeEnd(element));
        continue;
      }
      scope.includedElements.insert(element);
      ++i;
      if (unseen.isClosedMenu(element)) omitUntil(i, forest.subtreeEnd(element));
    }
  };

  const ElementIndex area = focusedWebContent(forest);
  if (area == noElement) {
    include(0, order.size(), false);
  } else {
    for (ElementIndex element = forest.parent(area); element != noElement; element = forest.parent(element)) {
      scope.includedElements.insert(element);
    }
    include(forest.position(area), forest.subtreeEnd(area), true);
  }
  scope.omittedNavigationElementCount = static_cast<std::int64_t>(scope.omittedNavigationElements.size());
  scope.omittedOutOfScopeElementCount =
      total - static_cast<std::int64_t>(scope.includedElements.size()) - scope.omittedNavigationElementCount;
  return scope;
}

}  // namespace quillo
