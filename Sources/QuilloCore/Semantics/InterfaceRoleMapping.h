#pragma once

#include <string>
#include <string_view>

#include "QuilloCore/Semantics/InterfaceSemanticRole.h"
#include "QuilloCore/Support/RareOptional.h"

namespace quillo {

/// The semantic role of an accessibility role, refined by the subrole; comparisons are exact. Never gives `section`,
/// which depends on more than the role.
InterfaceSemanticRole semanticRole(std::string_view accessibilityRole, const RareOptional<std::string>& subrole);

}  // namespace quillo
