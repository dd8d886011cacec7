#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

using InterfaceDraftIndex = std::uint32_t;

/// The tree between the walk and the flattening: elements whose parent, child ids and depth are not yet set. Elements
/// and children stand apart, because elements are large and the passes mostly look at children. Both are in pre-order,
/// as the observation's elements will be, so that a pass goes through memory once; the first is the synthetic root or
/// stays unused. What no list names any more is garbage; an element is named at most once, by one that stands before
/// it.
struct InterfaceDraftTree {
  std::vector<InterfaceElement> elements;
  std::vector<std::vector<InterfaceDraftIndex>> children;  ///< in source order

  /// Cells that carry nothing and so are no elements, but keep their column's place in a row until the tables are
  /// aggregated.
  std::vector<bool> isEmptyCell;
  InterfaceDraftIndex root = 0;
};

/// The drafts of a subtree in pre-order, one at a time. No recursion, so any depth will do.
class InterfaceDraftPreorder {
 public:
  InterfaceDraftPreorder(const InterfaceDraftTree& tree, InterfaceDraftIndex start) : tree_(tree), pending_{start} {}

  bool isAtEnd() const { return pending_.empty(); }

  /// The next draft; its children come after it unless `skipChildren` is called first.
  InterfaceDraftIndex next();
  void skipChildren() { pending_.resize(pendingBeforeChildren_); }

 private:
  const InterfaceDraftTree& tree_;
  std::vector<InterfaceDraftIndex> pending_;
  std::size_t pendingBeforeChildren_ = 0;
};

}  // namespace quillo
