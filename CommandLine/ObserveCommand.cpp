#include "Commands.h"
#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"

namespace quillo {

CommandResult runObserve(const ObserveOptions& options) {
  const auto snapshot = decodeJson<AccessibilitySnapshot>(readInput(options.input));
  const InterfaceObservation observation = AccessibilitySemanticNormalizer::normalize(
      snapshot, {.synthesizeApplicationRoot = options.synthesizesApplicationRoot,
                 .inferConservativeActions = options.infersActions});
  return {encodeJson(observation, JsonStyle::prettyPrinted)};
}

}  // namespace quillo
