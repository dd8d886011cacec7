#pragma once

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// Reduces the rows of tables and outlines: a row carries its cells' texts in `rowValues` and the table's header texts
/// in `columnHeaders`, and keeps as children only what has state of its own.
void aggregateTabularStructures(InterfaceDraftTree& tree);

}  // namespace quillo
