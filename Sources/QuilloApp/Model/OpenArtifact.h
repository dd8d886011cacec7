#pragma once

#include <memory>
#include <string>

#include "QuilloCore/Artifacts/ArtifactModels.h"

namespace quillo {

/// What an artifact's files hold. It never changes.
struct ArtifactContents {
  std::string screenshotPNG;
  AccessibilitySnapshot accessibilitySnapshot;
  InterfaceObservation interfaceObservation;
};

/// A loaded artifact whose contents are shared: an edit replaces the manifest, and many megabytes stay where they are.
struct OpenArtifact {
  StoredArtifact stored;
  std::shared_ptr<const ArtifactContents> contents;  ///< never null

  const UUID& id() const { return stored.manifest.id; }

  /// The same manifest and the very same contents.
  friend bool operator==(const OpenArtifact&, const OpenArtifact&) = default;
};

OpenArtifact openArtifact(LoadedArtifact loaded);

/// Whether the manifests agree in all that an edit can change, to the second, which is what a bundle stores.
bool holdSameEdits(const ArtifactManifest& a, const ArtifactManifest& b);

}  // namespace quillo
