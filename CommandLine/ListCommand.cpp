#include <string>

#include "Commands.h"
#include "OutputText.h"

namespace quillo {

CommandResult runList(const ListOptions& options, CommandLibrary& library) {
  if (options.printsJson) {
    std::vector<ArtifactManifest> manifests;
    for (StoredArtifact& stored : library.list(ListingDetail::everything))
      manifests.push_back(std::move(stored.manifest));
    return {encodeJson(manifests, JsonStyle::prettyPrinted)};
  }
  std::vector<std::string> lines;
  for (const StoredArtifact& stored : library.list(ListingDetail::withoutContextTexts)) {
    const ArtifactManifest& manifest = stored.manifest;
    lines.push_back(manifest.id.text() + "\t" + formatDateSeconds(manifest.createdAt) + "\t" +
                    showingBreaksAsBlanks(manifest.source.applicationName) + "\t" +
                    showingBreaksAsBlanks(manifest.title));
  }
  return {joiningLines(lines)};
}

}  // namespace quillo
