#pragma once

#include <cstddef>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// Whether the element carries any text of its own (label, string value or other value, content, description, help,
/// placeholder).
bool hasText(const InterfaceElement& element);

/// State that a table row's cell texts cannot express, so that the element must stand beside them.
bool hasIndependentState(const InterfaceElementState& state);

/// Such state, an action or an identifier.
bool hasIndependentRowState(const InterfaceElement& element);

/// A group, section or unknown element with neither text nor independent state: without children it means nothing.
bool isBareContainer(const InterfaceElement& element);

/// Whether the element is kept; a dropped one's children take its place.
bool shouldRetain(const InterfaceElement& element, std::size_t retainedChildCount, bool isSourceRoot);

}  // namespace quillo
