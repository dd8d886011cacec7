#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// What the mapping of one node needs to know of the whole capture.
struct InterfaceMappingContext {
  std::optional<ArtifactRect> viewport;       ///< the captured window's frame
  std::optional<std::int64_t> focusedNodeID;  ///< the one node that has the focus, when the capture knows it
  bool inferActions = true;
};

/// Makes a fresh element the one of the node, without its place in the tree (`parentID`, `childIDs` and `depth` are
/// left unset). Elements are large, so it is made where it is to stay. `retainedChildCount`: how many elements the
/// node's children yielded.
void mapElement(InterfaceElement& element, const AccessibilityNode& node, std::size_t retainedChildCount,
                const InterfaceMappingContext& context);

}  // namespace quillo
