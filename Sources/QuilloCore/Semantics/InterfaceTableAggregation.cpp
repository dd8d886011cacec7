#include "QuilloCore/Semantics/InterfaceTableAggregation.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceCellText.h"
#include "QuilloCore/Semantics/InterfaceRetention.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;
using Index = InterfaceDraftIndex;

bool isTabular(Role role) {
  return role == Role::table || role == Role::tree;
}
bool isRow(Role role) {
  return role == Role::row || role == Role::treeItem;
}

bool isHeaderCell(const InterfaceElement& element) {
  return element.role == Role::cell && element.accessibilitySubrole == "AXColumnHeader";
}

/// Structure that a cell's text cannot stand for. Tables that only lay out a page are full of it.
bool isStructure(Role role) {
  switch (role) {
    case Role::table:
    case Role::tree:
    case Role::list:
    case Role::heading:
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

/// What must stand beside the aggregated values: state of its own, and what the row's texts would misrepresent.
bool standsBesideRow(const InterfaceElement& element) {
  return hasIndependentRowState(element) || element.isProtected || element.visibility == InterfaceVisibility::hidden;
}

/// One table or outline with the rows and header cells that are its own and not a nested table's.
struct Table {
  Index index = 0;
  std::vector<Index> rows;
  std::vector<Index> columns;
  std::vector<std::vector<Index>> rowCells;  // for each row; empty when the row cannot be aggregated
  std::vector<Index> looseHeaderCells;       // header cells outside any row
};

class Aggregation {
 public:
  explicit Aggregation(InterfaceDraftTree& tree) : tree_(tree) {}

  void run() {
    for (const Index index : preorder(tree_, tree_.root)) {
      if (isTabular(tree_[index].element.role)) tables_.push_back(index);
    }
    // Inner tables first: an outer row that holds one is left as it is.
    for (auto table = tables_.rbegin(); table != tables_.rend(); ++table) aggregate(*table);
  }

 private:
  Table survey(Index index) const {
    struct Visit {
      Index index;
      bool isInRow;
    };
    Table table;
    table.index = index;
    std::vector<Visit> pending;
    const auto push = [&](const std::vector<Index>& children, bool isInRow) {
      for (auto child = children.rbegin(); child != children.rend(); ++child) pending.push_back({*child, isInRow});
    };
    push(tree_[index].children, false);
    while (!pending.empty()) {
      const Visit visit = pending.back();
      pending.pop_back();
      const InterfaceDraftElement& draft = tree_[visit.index];
      const Role role = draft.element.role;
      if (isTabular(role)) continue;
      if (role == Role::cell) {
        if (!visit.isInRow && isHeaderCell(draft.element)) table.looseHeaderCells.push_back(visit.index);
        continue;
      }
      if (isRow(role)) {
        table.rows.push_back(visit.index);
        table.rowCells.push_back(cellsOfRow(visit.index));
      }
      if (role == Role::column) table.columns.push_back(visit.index);
      push(draft.children, visit.isInRow || isRow(role));
    }
    return table;
  }

  /// The row's outermost cells in source order, none inside a nested row; empty when one of them is more than text.
  std::vector<Index> cellsOfRow(Index row) const {
    std::vector<Index> cells;
    std::vector<Index> pending(tree_[row].children.rbegin(), tree_[row].children.rend());
    while (!pending.empty()) {
      const Index current = pending.back();
      pending.pop_back();
      const InterfaceDraftElement& draft = tree_[current];
      if (draft.element.role == Role::cell) {
        if (holdsStructure(current)) return {};
        cells.push_back(current);
        continue;
      }
      if (isRow(draft.element.role) || isStructure(draft.element.role)) continue;
      pending.insert(pending.end(), draft.children.rbegin(), draft.children.rend());
    }
    return cells;
  }

  bool holdsStructure(Index cell) const {
    return std::ranges::any_of(preorder(tree_, cell), [&](Index index) {
      const Role role = tree_[index].element.role;
      return isStructure(role) || isRow(role);
    });
  }

  std::vector<std::string> textsOf(const std::vector<Index>& cells) const {
    std::vector<std::string> texts;
    texts.reserve(cells.size());
    for (const Index cell : cells) texts.push_back(cellText(tree_, cell));
    return texts;
  }

  bool isHeaderRow(const std::vector<Index>& cells) const {
    return !cells.empty() && std::ranges::all_of(cells, [&](Index cell) { return isHeaderCell(tree_[cell].element); });
  }

  /// From the first header row, else from header cells outside the rows, else from the columns' labels.
  std::vector<std::string> headersOf(const Table& table) const {
    for (const auto& cells : table.rowCells) {
      if (isHeaderRow(cells)) return textsOf(cells);
    }
    if (!table.looseHeaderCells.empty()) return textsOf(table.looseHeaderCells);
    std::vector<std::string> labels;
    for (const Index column : table.columns) labels.push_back(tree_[column].element.label.value_or(""));
    return std::ranges::all_of(labels, &std::string::empty) ? std::vector<std::string>{} : labels;
  }

  void aggregate(Index index) {
    const Table table = survey(index);
    const std::vector<std::string> headers = headersOf(table);
    bool anyRowCarriesHeaders = false;
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
      if (table.rowCells[i].empty()) continue;
      InterfaceElementProperties& properties = tree_[table.rows[i]].element.properties;
      properties.rowValues = textsOf(table.rowCells[i]);
      if (!headers.empty()) {
        properties.columnHeaders = headers;
        anyRowCarriesHeaders = true;
      }
      pruneRow(table.rows[i]);
    }
    if (anyRowCarriesHeaders && !table.looseHeaderCells.empty()) removeStatelessHeaders(table);
  }

  /// Keeps, in source order, the outermost descendants that stand beside the values; nested rows stay with all they
  /// hold.
  void pruneRow(Index row) {
    struct Visit {
      Index index;
      bool isDone;
    };
    std::vector<Index> kept;
    std::vector<std::size_t> starts;  // where in `kept` the results of the open elements begin
    std::vector<Visit> pending;
    const auto push = [&](const std::vector<Index>& children) {
      for (auto child = children.rbegin(); child != children.rend(); ++child) pending.push_back({*child, false});
    };
    push(tree_[row].children);
    while (!pending.empty()) {
      const Visit visit = pending.back();
      pending.pop_back();
      InterfaceDraftElement& draft = tree_[visit.index];
      if (visit.isDone) {
        const std::size_t start = starts.back();
        starts.pop_back();
        draft.children.assign(kept.begin() + static_cast<std::ptrdiff_t>(start), kept.end());
        kept.resize(start);
        kept.push_back(visit.index);
      } else if (isRow(draft.element.role) || isTabular(draft.element.role) || isStructure(draft.element.role)) {
        kept.push_back(visit.index);
      } else if (standsBesideRow(draft.element)) {
        starts.push_back(kept.size());
        pending.push_back({visit.index, true});
        push(draft.children);
      } else {
        push(draft.children);
      }
    }
    tree_[row].children = std::move(kept);
  }

  void removeStatelessHeaders(const Table& table) {
    const auto isRedundant = [&](Index child) {
      const InterfaceDraftElement& draft = tree_[child];
      return isHeaderCell(draft.element) && !standsBesideRow(draft.element) &&
             std::ranges::none_of(preorder(tree_, child),
                                  [&](Index inner) { return standsBesideRow(tree_[inner].element); });
    };
    std::erase_if(tree_[table.index].children, isRedundant);
  }

  InterfaceDraftTree& tree_;
  std::vector<Index> tables_;
};

}  // namespace

void aggregateTabularStructures(InterfaceDraftTree& tree) {
  Aggregation(tree).run();
}

}  // namespace quillo
