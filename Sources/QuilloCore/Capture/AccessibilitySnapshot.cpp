#include "QuilloCore/Capture/AccessibilitySnapshot.h"

#include <algorithm>

namespace quillo {

const AccessibilityAttributeValue* AccessibilityNode::attribute(std::string_view name) const {
  const auto found = std::ranges::find(attributes, name, &AccessibilityAttribute::name);
  return found == attributes.end() ? nullptr : &found->value;
}

void AccessibilityNode::sortAttributes() {
  // Nearly always in order already, and sorting moves everything even then.
  if (std::ranges::is_sorted(attributes, {}, &AccessibilityAttribute::name)) return;
  std::ranges::stable_sort(attributes, {}, &AccessibilityAttribute::name);
}

void AccessibilitySnapshot::deriveFields() {
  if (!std::ranges::is_sorted(nodes, {}, &AccessibilityNode::id))
    std::ranges::stable_sort(nodes, {}, &AccessibilityNode::id);
  nodeCount = static_cast<std::int64_t>(nodes.size());
  wasTruncated = !truncations.empty();
}

}  // namespace quillo
