#include "QuilloCore/Semantics/InterfaceTableSurvey.h"

#include <ranges>

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;
using Index = InterfaceDraftIndex;

void surveyCell(const InterfaceDraftTree& tree, Index cell, InterfaceTableRow& row) {
  row.cells.push_back(cell);
  for (InterfaceDraftPreorder walk(tree, cell); !walk.isAtEnd() && !row.holdsStructure;) {
    const Role role = tree.elements[walk.next()].role;
    row.holdsStructure = isStructure(role) || isTabularRow(role);
    row.holdsLists = row.holdsLists || isListOrHeading(role);
  }
}

InterfaceTableRow surveyRow(const InterfaceDraftTree& tree, Index row) {
  InterfaceTableRow result{.index = row, .cells = {}};
  InterfaceDraftPreorder walk(tree, row);
  walk.next();
  while (!walk.isAtEnd()) {
    const Index index = walk.next();
    const Role role = tree.elements[index].role;
    if (role == Role::cell) surveyCell(tree, index, result);
    if (role == Role::cell || isTabularRow(role) || isStructure(role) || isListOrHeading(role)) walk.skipChildren();
  }
  return result;
}

}  // namespace

bool isTabular(Role role) {
  return role == Role::table || role == Role::tree;
}

bool isTabularRow(Role role) {
  return role == Role::row || role == Role::treeItem;
}

bool isColumnHeaderCell(const InterfaceElement& element) {
  return element.role == Role::cell && element.accessibilitySubrole == "AXColumnHeader";
}

bool isStructure(Role role) {
  switch (role) {
    case Role::table:
    case Role::tree:
    case Role::document:
    case Role::webArea:
    case Role::textArea:
    case Role::tabGroup:
    case Role::toolbar:
    case Role::navigation:
    case Role::menu:
    case Role::menuBar: return true;
    default: return false;
  }
}

bool isListOrHeading(Role role) {
  return role == Role::list || role == Role::heading;
}

InterfaceTable surveyTable(const InterfaceDraftTree& tree, Index table) {
  struct Visit {
    Index index;
    bool isInRow;
  };
  InterfaceTable result;
  std::vector<Visit> pending;
  const auto push = [&](Index parent, bool isInRow) {
    for (const Index child : tree.children[parent] | std::views::reverse) pending.push_back({child, isInRow});
  };
  push(table, false);
  while (!pending.empty()) {
    const Visit visit = pending.back();
    pending.pop_back();
    const InterfaceElement& element = tree.elements[visit.index];
    if (isTabular(element.role)) continue;
    if (element.role == Role::cell) {
      if (!visit.isInRow && isColumnHeaderCell(element)) result.looseHeaderCells.push_back(visit.index);
      continue;
    }
    if (element.role == Role::column) result.columns.push_back(visit.index);
    if (isTabularRow(element.role)) result.rows.push_back(surveyRow(tree, visit.index));
    push(visit.index, visit.isInRow || isTabularRow(element.role));
  }
  return result;
}

}  // namespace quillo
