#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

using AccessibilityValues = std::vector<AccessibilityResult<AccessibilityValue>>;

/// The values of several attributes, one result a name. They are read in one message; when that fails for a reason that
/// need not hold for each of them, one by one. Failures other than absence are recorded as issues.
AccessibilityValues readAttributes(AccessibilitySession& session, AccessibilityCaptureState& state,
                                   AccessibilityElement element, std::span<const std::string_view> names,
                                   std::optional<std::int64_t> nodeID);

/// One attribute; nothing when it is absent or unreadable.
std::optional<AccessibilityValue> readAttribute(AccessibilitySession& session, AccessibilityCaptureState& state,
                                                AccessibilityElement element, std::string_view name,
                                                std::optional<std::int64_t> nodeID);

/// The value when it was read and has that type, or null.
template <class T>
const T* valueIf(const AccessibilityResult<AccessibilityValue>& result) {
  return result ? std::get_if<T>(&*result) : nullptr;
}

/// The rectangle that a position and a size make; nothing unless both are there and finite.
std::optional<ArtifactRect> frameFrom(const AccessibilityResult<AccessibilityValue>& position,
                                      const AccessibilityResult<AccessibilityValue>& size);

}  // namespace quillo
