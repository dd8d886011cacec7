#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactBundleReader.h"
#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Artifacts/ArtifactProjection.h"
#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Artifacts/LibraryListing.h"
#include "QuilloCore/Artifacts/TrashOperation.h"
#include "QuilloCore/Support/Clocks.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// The directory of artifact bundles. A bundle appears, changes and disappears in one step each, so that neither a
/// crash nor a power cut leaves half of one.
///
/// Blocking, one operation at a time; ArtifactRepository queues them. Several processes may work in one library.
/// Throws ArtifactRepositoryError; besides FileSystemError, ArtifactFileError and
/// CanonicalAccessibilityEvidenceCodecError pass through.
class ArtifactStore {
 public:
  /// Everything must outlive the store.
  struct Services {
    FileSystem& fileSystem;
    TrashOperation& trash;
    WallClock& clock;
    UUIDGenerating& identifiers;
  };

  /// Does no input or output.
  ArtifactStore(std::filesystem::path rootPath, Services services, ArtifactProjection projection);

  const std::filesystem::path& rootPath() const { return rootPath_; }
  std::filesystem::path bundlePath(const UUID& id) const;

  /// Makes the root if it is missing and removes abandoned staging directories.
  void prepare();

  /// Newest first, of equal dates the lower identifier first. Damaged bundles are left out.
  std::vector<StoredArtifact> list(ListingDetail detail = ListingDetail::everything);
  /// The same list, with the damaged bundles and what is known of each artifact's condition. A directory that is not
  /// named by an identifier is no bundle of ours, and left out.
  LibraryListing survey(ListingDetail detail);
  /// The context texts of these artifacts, as they are stored; an empty one where it cannot be read.
  std::vector<std::string> contextTexts(const std::vector<UUID>& ids);
  /// The names of all bundle directories, damaged ones too, ascending.
  std::vector<std::string> bundleNames();

  /// `checkpoint` is called between the steps until the bundle is in place; what it throws ends the operation, and
  /// nothing is left.
  StoredArtifact create(const ContextArtifactDraft& draft, const std::function<void()>& checkpoint = [] {});

  /// Reads a bundle whole; writes nothing.
  LoadedArtifact load(const UUID& id);
  /// The same for a bundle anywhere.
  LoadedArtifact loadBundle(const std::filesystem::path& bundlePath);
  /// The manifest alone, as it stands in the file.
  StoredArtifact readBundleManifest(const std::filesystem::path& bundlePath);

  /// Stores every field of the manifest but the file names, which stay those of the bundle.
  StoredArtifact update(const StoredArtifact& stored, const ArtifactManifest& manifest);

  /// Returns the bundle's new place, if the system says so.
  std::optional<std::filesystem::path> moveToTrash(const UUID& id);
  /// The same for a bundle anywhere, damaged or not. Without an identifier, failures are TrashError.
  std::optional<std::filesystem::path> moveBundleToTrash(const std::filesystem::path& bundlePath,
                                                         const std::optional<UUID>& id);
  /// Takes a bundle out of the Trash again, where `moveToTrash` said that it went. Fails when the library has an
  /// artifact of that identifier meanwhile; otherwise failures are TrashError.
  void restoreFromTrash(const UUID& id, const std::filesystem::path& trashed);

 private:
  std::unique_ptr<Directory> prepareRoot();
  LoadedArtifact loadFrom(Directory& bundle, const std::filesystem::path& bundlePath);
  void noteDamage(LibraryListing& listing, Directory& root, const std::string& name, std::string reason);
  bool exists(const std::filesystem::path& bundlePath);

  std::filesystem::path rootPath_;
  Services services_;
  ArtifactProjection projection_;
};

/// `$XDG_DATA_HOME/Quillo/Artifacts`, or below `~/.local/share`; an `XDG_DATA_HOME` that is no absolute path counts as
/// unset.
std::filesystem::path defaultLibraryPath();

}  // namespace quillo
