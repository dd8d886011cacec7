#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

InterfaceDraftIndex InterfaceDraftPreorder::next() {
  const InterfaceDraftIndex index = pending_.back();
  pending_.pop_back();
  pendingBeforeChildren_ = pending_.size();
  const auto& children = tree_.children[index];
  pending_.insert(pending_.end(), children.rbegin(), children.rend());
  return index;
}

}  // namespace quillo
