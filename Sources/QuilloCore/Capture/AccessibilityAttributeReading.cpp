#include "QuilloCore/Capture/AccessibilityAttributeReading.h"

#include <array>
#include <utility>

namespace quillo {
namespace {

// An element that is gone, or a process that does not answer, would only fail the same way once for every name.
bool isWorthReadingOneByOne(AccessibilityErrorCode code) {
  return code != AccessibilityErrorCode::invalidUIElement && code != AccessibilityErrorCode::cannotComplete &&
         code != AccessibilityErrorCode::apiDisabled;
}

}  // namespace

AccessibilityValues readAttributes(AccessibilitySession& session, AccessibilityCaptureState& state,
                                   AccessibilityElement element, std::span<const std::string_view> names,
                                   std::optional<std::int64_t> nodeID) {
  if (names.empty()) return {};
  auto message = session.multipleAttributeValues(element, names);
  if (!message && !isWorthReadingOneByOne(message.error())) {
    state.addWarning(message.error(), AccessibilityIssueMessages::couldNotReadAttribute, nodeID, std::nullopt);
    return AccessibilityValues(names.size(), std::unexpected(message.error()));
  }

  AccessibilityValues values;
  if (message && message->size() == names.size()) {
    values = std::move(*message);
  } else {
    values.reserve(names.size());
    for (const std::string_view name : names) values.push_back(session.attributeValue(element, name));
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] || meansAbsence(values[i].error())) continue;
    state.addWarning(values[i].error(), AccessibilityIssueMessages::couldNotReadAttribute, nodeID, names[i]);
  }
  return values;
}

std::optional<AccessibilityValue> readAttribute(AccessibilitySession& session, AccessibilityCaptureState& state,
                                                AccessibilityElement element, std::string_view name,
                                                std::optional<std::int64_t> nodeID) {
  auto value = session.attributeValue(element, name);
  if (value) return std::move(*value);
  if (!meansAbsence(value.error())) {
    state.addWarning(value.error(), AccessibilityIssueMessages::couldNotReadAttribute, nodeID, name);
  }
  return std::nullopt;
}

std::optional<ArtifactRect> frameFrom(const AccessibilityResult<AccessibilityValue>& position,
                                      const AccessibilityResult<AccessibilityValue>& size) {
  const auto* origin = valueIf<ArtifactPoint>(position);
  const auto* extent = valueIf<ArtifactSize>(size);
  if (origin == nullptr || extent == nullptr) return std::nullopt;
  const ArtifactRect frame{origin->x, origin->y, extent->width, extent->height};
  return frame.isFinite() ? std::optional(frame) : std::nullopt;
}

}  // namespace quillo
