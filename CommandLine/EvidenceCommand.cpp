#include "Commands.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

namespace quillo {

CommandResult runEvidence(const EvidenceOptions& options) {
  const std::string input = readInput(options.input);
  if (options.direction == EvidenceOptions::Direction::encode)
    return {CanonicalAccessibilityEvidenceCodec::encodeSnapshot(decodeJson<AccessibilitySnapshot>(input))};
  return {encodeJson(CanonicalAccessibilityEvidenceCodec::decodeSnapshot(input), JsonStyle::prettyPrinted)};
}

}  // namespace quillo
