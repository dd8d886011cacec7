#pragma once

#include <string_view>

#include "QuilloCore/Capture/AccessibilityErrorCode.h"

namespace quillo {

/// The accessibility error of a D-Bus error name.
AccessibilityErrorCode accessibilityErrorOf(std::string_view dbusErrorName);

}  // namespace quillo
