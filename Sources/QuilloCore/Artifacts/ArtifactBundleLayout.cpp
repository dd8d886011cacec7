#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"

#include <algorithm>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"

namespace quillo::ArtifactBundleLayout {
namespace {

bool isSafe(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

bool hasNamesOfItsVersion(const ArtifactManifest& manifest) {
  if (manifest.schemaVersion < 3) return manifest.accessibilityFilename && !manifest.evidenceFilename;
  return manifest.evidenceFilename == evidenceFilename && !manifest.accessibilityFilename &&
         manifest.screenshotFilename == screenshotFilename &&
         manifest.observationFilename.value_or(std::string(observationFilename)) == observationFilename;
}

}  // namespace

std::string bundleName(const UUID& id) {
  return id.text() + "." + std::string(bundleExtension);
}

std::optional<UUID> identifierOfBundleName(std::string_view name) {
  if (!isBundleName(name)) return std::nullopt;
  return UUID::parse(name.substr(0, name.size() - bundleExtension.size() - 1));
}

bool isBundleName(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot != std::string_view::npos && dot > 0 && name.front() != '.' && name.substr(dot + 1) == bundleExtension;
}

void validate(const ArtifactManifest& manifest) {
  if (manifest.schemaVersion < 1 || manifest.schemaVersion > ArtifactManifest::currentSchemaVersion)
    throw ArtifactRepositoryError(ArtifactRepositoryError::UnsupportedSchema{manifest.schemaVersion});

  std::vector<std::string_view> names = {manifestFilename, manifest.screenshotFilename};
  for (const auto* name :
       {&manifest.accessibilityFilename, &manifest.evidenceFilename, &manifest.observationFilename}) {
    if (*name) names.emplace_back(**name);
  }
  const bool areSafe = std::ranges::all_of(names, isSafe);
  std::ranges::sort(names);
  const bool areDistinct = std::ranges::adjacent_find(names) == names.end();
  if (!hasNamesOfItsVersion(manifest) || !areSafe || !areDistinct)
    throw ArtifactRepositoryError(ArtifactRepositoryError::InvalidBundleLayout{manifest.id});
}

}  // namespace quillo::ArtifactBundleLayout
