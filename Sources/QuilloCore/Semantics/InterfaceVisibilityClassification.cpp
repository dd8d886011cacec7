#include "QuilloCore/Semantics/InterfaceVisibilityClassification.h"

#include "QuilloCore/Semantics/InterfaceAttributeReading.h"

namespace quillo {

InterfaceVisibility classifyVisibility(const AccessibilityNode& node, const std::optional<ArtifactRect>& viewport) {
  using enum InterfaceVisibility;
  if (readBoolean(node, "AXHidden").value_or(false)) return hidden;
  if (readBoolean(node, "AXOffscreen").value_or(false) || readBoolean(node, "AXIsOffscreen").value_or(false)) {
    return offscreen;
  }
  if (const auto isVisible = readBoolean(node, "AXVisible")) return *isVisible ? visible : offscreen;
  if (!node.frame) return unknown;
  const bool hasArea = node.frame->width > 0 && node.frame->height > 0;  // false for NaN, too
  if (!hasArea) return offscreen;
  return !viewport || viewport->overlaps(*node.frame) ? visible : offscreen;
}

}  // namespace quillo
