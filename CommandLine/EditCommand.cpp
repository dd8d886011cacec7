#include "Commands.h"

namespace quillo {

CommandResult runEdit(const EditOptions& options, CommandLibrary& library, WallClock& clock) {
  const StoredArtifact stored = library.store().readBundleManifest(library.find(options.artifact).path);
  ArtifactManifest manifest = stored.manifest;
  if (options.title) manifest.title = *options.title;
  if (options.annotations) manifest.annotations = *options.annotations;
  manifest.modifiedAt = clock.now();
  library.store().update(stored, manifest);
  return {std::nullopt};
}

}  // namespace quillo
