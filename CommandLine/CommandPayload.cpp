#include "CommandPayload.h"

#include <utility>

#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

namespace quillo {

ClipboardPayload loadPayload(const std::string& artifact, CommandLibrary& library) {
  LoadedArtifact loaded = library.store().loadBundle(library.find(artifact).path);
  return {.captureID = loaded.stored.manifest.id,
          .pngData = std::move(loaded.screenshotPNG),
          .plainText = ArtifactPasteTextRenderer::render(loaded.stored.manifest)};
}

}  // namespace quillo
