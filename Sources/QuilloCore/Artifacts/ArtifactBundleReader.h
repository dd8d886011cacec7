#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "QuilloCore/Artifacts/ArtifactManifest.h"
#include "QuilloCore/Artifacts/ArtifactProjection.h"
#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// How much of a manifest a listing keeps. The context texts are by far the largest part of a library.
enum class ListingDetail : std::uint8_t { everything, withoutContextTexts };

/// An observation and whether it was made anew from the snapshot, the stored one being missing or of an older version.
struct InterfaceObservationRead {
  InterfaceObservation observation;
  bool wasRebuilt = false;
};

/// A manifest, and whether its context text says that the capture reached a limit.
struct ListedManifest {
  ArtifactManifest manifest;
  bool isPartial = false;
};

/// Reads the files of one bundle; writes nothing. Throws ArtifactRepositoryError, ArtifactFileError and
/// FileSystemError.
class ArtifactBundleReader {
 public:
  /// `bundleName` is what messages call the bundle.
  ArtifactBundleReader(Directory& bundle, std::string bundleName)
      : bundle_(bundle), bundleName_(std::move(bundleName)) {}

  /// The manifest, its version and the names in it having been checked.
  ArtifactManifest readManifest() const { return readListedManifest(ListingDetail::everything).manifest; }
  ListedManifest readListedManifest(ListingDetail detail) const;
  /// The remaining readings take the manifest that `readManifest` returned.
  std::string readScreenshot(const ArtifactManifest& manifest) const;
  AccessibilitySnapshot readSnapshot(const ArtifactManifest& manifest) const;
  InterfaceObservationRead readObservation(const ArtifactManifest& manifest, const AccessibilitySnapshot& snapshot,
                                           const ArtifactProjection& projection) const;

 private:
  template <class Decode>
  auto decodeFile(const std::string& filename, Decode decode) const;

  Directory& bundle_;
  std::string bundleName_;
};

}  // namespace quillo
