#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "QuilloCore/Artifacts/ArtifactManifest.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// What a finished capture hands over to be stored.
struct ContextArtifactDraft {
  ArtifactManifest manifest;
  std::string screenshotPNG;  ///< bytes of the file
  AccessibilitySnapshot accessibilitySnapshot;
  InterfaceObservation interfaceObservation;

  friend bool operator==(const ContextArtifactDraft&, const ContextArtifactDraft&) = default;
};

/// One bundle as the library knows it.
struct StoredArtifact {
  ArtifactManifest manifest;
  std::filesystem::path bundlePath;  ///< absolute

  std::filesystem::path screenshotPath() const { return bundlePath / manifest.screenshotFilename; }
  std::optional<std::filesystem::path> accessibilityPath() const { return path(manifest.accessibilityFilename); }
  std::optional<std::filesystem::path> evidencePath() const { return path(manifest.evidenceFilename); }
  std::optional<std::filesystem::path> observationPath() const { return path(manifest.observationFilename); }

  friend bool operator==(const StoredArtifact&, const StoredArtifact&) = default;

 private:
  std::optional<std::filesystem::path> path(const std::optional<std::string>& filename) const {
    return filename ? std::optional(bundlePath / *filename) : std::nullopt;
  }
};

/// A stored artifact with its files read. The manifest's context text is that of the observation, whatever the file
/// says.
struct LoadedArtifact {
  StoredArtifact stored;
  std::string screenshotPNG;
  AccessibilitySnapshot accessibilitySnapshot;
  InterfaceObservation interfaceObservation;

  friend bool operator==(const LoadedArtifact&, const LoadedArtifact&) = default;
};

}  // namespace quillo
