#pragma once

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// Reduces the rows of tables and outlines: a row carries its cells' texts in `rowValues` and the table's header texts
/// in `columnHeaders`, and keeps as children only what has state of its own. Header cells and columns whose texts the
/// rows carry go, and so does every empty cell of the tree.
void aggregateTabularStructures(InterfaceDraftTree& tree);

}  // namespace quillo
