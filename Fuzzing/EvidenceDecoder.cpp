#include <string>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Support/JsonError.h"
#include "Require.h"

namespace codec = quillo::CanonicalAccessibilityEvidenceCodec;

/// A file is refused with one of the two errors; one that is read is written so that it is read back as the same file,
/// and the snapshot in it survives the way through evidence.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo::fuzzing;
  try {
    const std::string written = codec::encode(codec::decode(asText(data, size)));
    require(codec::encode(codec::decode(written)) == written, "what is written is read back");
    const quillo::AccessibilitySnapshot snapshot = codec::decodeSnapshot(written);
    require(codec::decodeSnapshot(codec::encodeSnapshot(snapshot)) == snapshot, "no part of the snapshot is lost");
  } catch (const quillo::JsonError& error) {
    require(!error.errorDescription().empty(), "an error says what is wrong");
  } catch (const quillo::CanonicalAccessibilityEvidenceCodecError& error) {
    require(!error.errorDescription().empty(), "an error says what is wrong");
  }
  return 0;
}
