#include "Commands.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

namespace quillo {

CommandResult runText(const TextOptions& options, CommandLibrary& library) {
  const LoadedArtifact artifact = library.store().loadBundle(library.find(options.artifact).path);
  return {ArtifactPasteTextRenderer::render(artifact.stored.manifest)};
}

}  // namespace quillo
