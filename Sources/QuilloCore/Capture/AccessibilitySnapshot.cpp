#include "QuilloCore/Capture/AccessibilitySnapshot.h"

#include <algorithm>

namespace quillo {

const AccessibilityAttributeValue* AccessibilityNode::attribute(std::string_view name) const {
  const auto found = std::ranges::find(attributes, name, &AccessibilityAttribute::name);
  return found == attributes.end() ? nullptr : &found->value;
}

void AccessibilityNode::sortAttributes() {
  std::ranges::stable_sort(attributes, {}, &AccessibilityAttribute::name);
}

void AccessibilitySnapshot::deriveFields() {
  std::ranges::stable_sort(nodes, {}, &AccessibilityNode::id);
  nodeCount = static_cast<std::int64_t>(nodes.size());
  wasTruncated = !truncations.empty();
}

}  // namespace quillo
