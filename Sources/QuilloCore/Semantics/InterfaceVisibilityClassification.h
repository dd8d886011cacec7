#pragma once

#include <optional>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// What the application says of the element's visibility, else where its frame lies in the window's.
InterfaceVisibility classifyVisibility(const AccessibilityNode& node, const std::optional<ArtifactRect>& viewport);

}  // namespace quillo
