#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElement.h"

namespace quillo {

/// "AXShowMenu" as "showMenu"; nothing for a name that is empty, longer than 80 characters or of several lines.
std::optional<std::string> normalizedActionName(std::string_view accessibilityName);

/// The distinct normalized actions in ascending order of their names.
std::vector<InterfaceAction> listedActions(std::span<const std::string> accessibilityNames);

/// What one can surely do with an element of that role, although the application lists nothing.
std::vector<InterfaceAction> inferredActions(InterfaceSemanticRole role);

}  // namespace quillo
