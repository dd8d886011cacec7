#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

using InterfaceDraftIndex = std::uint32_t;

/// An element whose parent, child ids and depth are not yet set.
struct InterfaceDraftElement {
  InterfaceElement element;
  std::vector<InterfaceDraftIndex> children;  ///< in source order

  /// A cell that carries nothing and so is no element, but keeps its column's place in a row until the tables are
  /// aggregated.
  bool isEmptyCell = false;
};

/// The tree between the walk and the flattening. Drafts that no list names any more are garbage; a draft is named at
/// most once, by a draft that stands behind it.
struct InterfaceDraftTree {
  std::vector<InterfaceDraftElement> drafts;
  InterfaceDraftIndex root = 0;

  InterfaceDraftElement& operator[](InterfaceDraftIndex index) { return drafts[index]; }
  const InterfaceDraftElement& operator[](InterfaceDraftIndex index) const { return drafts[index]; }
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
