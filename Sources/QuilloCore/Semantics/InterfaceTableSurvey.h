#pragma once

#include <vector>

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// One row with its outermost cells in source order, none of them inside a nested row.
struct InterfaceTableRow {
  InterfaceDraftIndex index = 0;
  std::vector<InterfaceDraftIndex> cells;
  bool holdsLists = false;      ///< a cell holds a list or a heading
  bool holdsStructure = false;  ///< a cell holds other structure
};

/// One table or outline: what is its own and not a nested table's, in source order.
struct InterfaceTable {
  std::vector<InterfaceTableRow> rows;
  std::vector<InterfaceDraftIndex> columns;
  std::vector<InterfaceDraftIndex> looseHeaderCells;  ///< header cells outside any row
};

bool isTabular(InterfaceSemanticRole role);
bool isTabularRow(InterfaceSemanticRole role);
bool isColumnHeaderCell(const InterfaceElement& element);

/// Structure that a cell's text cannot stand for. Tables that only lay out a page are full of it.
bool isStructure(InterfaceSemanticRole role);

/// Lists and headings: structure in a layout, but in a table of data their texts say enough.
bool isListOrHeading(InterfaceSemanticRole role);

InterfaceTable surveyTable(const InterfaceDraftTree& tree, InterfaceDraftIndex table);

}  // namespace quillo
