#pragma once

#include <string>

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// The visible text of a table cell: its own and its descendants' texts in source order, joined by one blank. Toolkits
/// often name an element with the texts of its children; of two such accounts the longer one stands alone, so that each
/// word comes once. White space is collapsed. Hidden and protected elements contribute nothing.
std::string cellText(const InterfaceDraftTree& tree, InterfaceDraftIndex cell);

/// Whether the element says something that `cellText` has no place for: help, a placeholder, an address, or a value
/// that is no text.
bool saysMoreThanCellText(const InterfaceElement& element);

}  // namespace quillo
