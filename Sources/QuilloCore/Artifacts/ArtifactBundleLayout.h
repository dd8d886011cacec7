#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Artifacts/ArtifactManifest.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// Which files a bundle has and what they are called.
namespace ArtifactBundleLayout {

inline constexpr std::string_view bundleExtension = "quillo";
inline constexpr std::string_view manifestFilename = "manifest.json";
inline constexpr std::string_view screenshotFilename = "screenshot.png";
inline constexpr std::string_view evidenceFilename = "evidence.json";
inline constexpr std::string_view observationFilename = "observation.json";

/// "0F1E2D3C-….quillo"
std::string bundleName(const UUID& id);

/// The identifier that a bundle directory's name spells, in upper or lower case; nothing for any other name.
std::optional<UUID> identifierOfBundleName(std::string_view name);

/// Whether a directory entry's name has the bundles' extension and is not hidden.
bool isBundleName(std::string_view name);

/// Throws ArtifactRepositoryError (UnsupportedSchema, InvalidBundleLayout) unless the manifest names files that a
/// bundle of its version may have, inside the bundle, none of them twice and none of them the manifest itself.
void validate(const ArtifactManifest& manifest);

}  // namespace ArtifactBundleLayout
}  // namespace quillo
