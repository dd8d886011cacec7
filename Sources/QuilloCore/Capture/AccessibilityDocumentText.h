#pragma once

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo {

/// The nodes, by id, from which one of `goals` can be reached through `childIDs`, the goals themselves included. Takes
/// time in proportion to nodes and references, whatever circles they form.
std::vector<bool> nodesReaching(std::span<const AccessibilityNode> nodes, std::span<const std::int64_t> goals);

/// Reads the complete text of the captured documents into their nodes, but for those that hold protected content and
/// those whose structure was not captured completely.
void captureCompleteDocumentText(AccessibilitySession& session, AccessibilityCaptureState& state,
                                 std::span<AccessibilityNode> nodes, std::span<const AccessibilityElement> elements,
                                 const std::unordered_map<std::int64_t, AdvertisedAttributeNames>& attributeNames);

}  // namespace quillo
