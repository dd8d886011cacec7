#pragma once

#include <string_view>

#include "QuilloCore/Semantics/InterfaceSemanticRole.h"

namespace quillo {

/// A role as the rendered text prints it: "pop-up button".
std::string_view roleName(InterfaceSemanticRole role);

}  // namespace quillo
