#pragma once

#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo {

/// How much a capture holds: "812 elements, complete", or "812 elements, partial: element limit reached".
std::string captureSummary(const AccessibilitySnapshot& snapshot);

}  // namespace quillo
