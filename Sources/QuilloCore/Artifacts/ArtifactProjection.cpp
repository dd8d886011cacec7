#include "QuilloCore/Artifacts/ArtifactProjection.h"

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "QuilloCore/Semantics/InterfaceObservationLLMRenderer.h"

namespace quillo {

ArtifactProjection ArtifactProjection::standard() {
  return {
      [](const AccessibilitySnapshot& snapshot) { return AccessibilitySemanticNormalizer::normalize(snapshot, {}); },
      [](const InterfaceObservation& observation) { return InterfaceObservationLLMRenderer::render(observation); }};
}

}  // namespace quillo
