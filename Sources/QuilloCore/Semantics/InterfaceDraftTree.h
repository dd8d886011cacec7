#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

using InterfaceDraftIndex = std::uint32_t;

/// An element whose `parentID`, `childIDs` and `depth` are not yet set.
struct InterfaceDraftElement {
  InterfaceElement element;
  std::vector<InterfaceDraftIndex> children;  ///< in source order
};

/// The tree between the walk and the flattening. Drafts that no list names any more are garbage; a draft is named at
/// most once.
struct InterfaceDraftTree {
  std::vector<InterfaceDraftElement> drafts;
  InterfaceDraftIndex root = 0;

  InterfaceDraftElement& operator[](InterfaceDraftIndex index) { return drafts[index]; }
  const InterfaceDraftElement& operator[](InterfaceDraftIndex index) const { return drafts[index]; }
};

/// The drafts reachable from `start`, itself included, in pre-order. No recursion, so any depth will do.
std::vector<InterfaceDraftIndex> preorder(const InterfaceDraftTree& tree, InterfaceDraftIndex start);

}  // namespace quillo
