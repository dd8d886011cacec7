#pragma once

#include <string>
#include <string_view>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo {

/// Converts a snapshot into canonical evidence and back without loss, and evidence into the bytes of its file.
///
/// Pure functions; linear in the size of the capture but for sorting its distinct texts. They throw
/// CanonicalAccessibilityEvidenceCodecError, and JsonError for bytes that are no JSON or have the wrong shape; nothing
/// is repaired.
namespace CanonicalAccessibilityEvidenceCodec {

CanonicalAccessibilityEvidence makeEvidence(const AccessibilitySnapshot& snapshot);
AccessibilitySnapshot makeSnapshot(const CanonicalAccessibilityEvidence& evidence);

/// Checks versions, that ids are unique, that texts are distinct and match their digests and lengths, and that every
/// text referred to is there.
void validate(const CanonicalAccessibilityEvidence& evidence);

/// Validates, then writes compact JSON with sorted keys.
std::string encode(const CanonicalAccessibilityEvidence& evidence);
/// Reads the version by itself first, then everything, then validates.
CanonicalAccessibilityEvidence decode(std::string_view bytes);

/// The same as `encode(makeEvidence(snapshot))` and `makeSnapshot(decode(bytes))`, without holding the evidence whole.
std::string encodeSnapshot(const AccessibilitySnapshot& snapshot);
AccessibilitySnapshot decodeSnapshot(std::string_view bytes);
/// As above, of a text that is parsed already.
AccessibilitySnapshot decodeSnapshot(const JsonCursor& root);

}  // namespace CanonicalAccessibilityEvidenceCodec
}  // namespace quillo
