#include "Commands.h"
#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"

namespace quillo {

namespace {

/// Lets go of the text, and of the snapshot before the observation is written: together they outweigh everything else.
InterfaceObservation observe(const ObserveOptions& options) {
  const auto readSnapshot = [&] { return decodeJson<AccessibilitySnapshot>(readInput(options.input)); };
  return AccessibilitySemanticNormalizer::normalize(readSnapshot(),
                                                    {.synthesizeApplicationRoot = options.synthesizesApplicationRoot,
                                                     .inferConservativeActions = options.infersActions});
}

}  // namespace

CommandResult runObserve(const ObserveOptions& options) {
  return {encodeJson(observe(options), JsonStyle::prettyPrinted)};
}

}  // namespace quillo
