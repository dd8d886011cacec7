#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Semantics/InterfaceSemanticRole.h"

namespace quillo {

/// The semantic role of an accessibility role, refined by the subrole; comparisons are exact. Never gives `section`,
/// which depends on more than the role.
InterfaceSemanticRole semanticRole(std::string_view accessibilityRole, const std::optional<std::string>& subrole);

}  // namespace quillo
