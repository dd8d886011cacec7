#include <string>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Support/JsonError.h"
#include "Require.h"

/// A manifest is refused with one of the two errors; one that is accepted names no file outside of its bundle, is read
/// back as it was written, and has a paste text.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quillo;
  using namespace quillo::fuzzing;
  try {
    const auto manifest = decodeJson<ArtifactManifest>(asText(data, size));
    const std::string written = encodeJson(manifest, JsonStyle::prettyPrinted);
    require(encodeJson(decodeJson<ArtifactManifest>(written), JsonStyle::prettyPrinted) == written,
            "what is written is read back");
    require(ArtifactPasteTextRenderer::render(manifest).starts_with("# Quillo capture: "), "the text has its heading");
    ArtifactBundleLayout::validate(manifest);
    require(manifest.screenshotFilename.find('/') == std::string::npos, "no file lies outside of the bundle");
  } catch (const JsonError& error) {
    require(!error.errorDescription().empty(), "an error says what is wrong");
  } catch (const ArtifactRepositoryError& error) {
    require(!error.errorDescription().empty(), "an error says what is wrong");
  }
  return 0;
}
