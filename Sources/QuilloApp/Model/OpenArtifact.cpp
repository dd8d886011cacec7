#include "QuilloApp/Model/OpenArtifact.h"

#include <chrono>
#include <tuple>
#include <utility>

namespace quillo {

OpenArtifact openArtifact(LoadedArtifact loaded) {
  auto contents = std::make_shared<ArtifactContents>();
  contents->screenshotPNG = std::move(loaded.screenshotPNG);
  contents->accessibilitySnapshot = std::move(loaded.accessibilitySnapshot);
  contents->interfaceObservation = std::move(loaded.interfaceObservation);
  return {std::move(loaded.stored), std::move(contents)};
}

bool holdSameEdits(const ArtifactManifest& a, const ArtifactManifest& b) {
  const auto second = [](Date date) { return std::chrono::floor<std::chrono::seconds>(date); };
  return std::tie(a.title, a.annotations, a.tags) == std::tie(b.title, b.annotations, b.tags) &&
         second(a.modifiedAt) == second(b.modifiedAt);
}

}  // namespace quillo
