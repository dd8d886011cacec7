#pragma once

#include <string>

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// The visible text of a table cell: its own and its descendants' texts in source order, joined by one blank, each word
/// once although a toolkit often gives an element the text of its children as its name. White space is collapsed.
/// Hidden and protected elements contribute nothing.
std::string cellText(const InterfaceDraftTree& tree, InterfaceDraftIndex cell);

}  // namespace quillo
