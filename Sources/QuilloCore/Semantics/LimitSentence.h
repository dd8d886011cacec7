#pragma once

#include <span>
#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo {

/// What a safety limit cut off, as a sentence or two; nothing is printed for a reason without records.
std::string limitSentence(AccessibilityTruncationReason reason, std::span<const AccessibilityTruncation> truncations);

}  // namespace quillo
