#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

std::vector<InterfaceDraftIndex> preorder(const InterfaceDraftTree& tree, InterfaceDraftIndex start) {
  std::vector<InterfaceDraftIndex> order;
  std::vector<InterfaceDraftIndex> pending = {start};
  while (!pending.empty()) {
    const InterfaceDraftIndex index = pending.back();
    pending.pop_back();
    order.push_back(index);
    const auto& children = tree[index].children;
    pending.insert(pending.end(), children.rbegin(), children.rend());
  }
  return order;
}

}  // namespace quillo
