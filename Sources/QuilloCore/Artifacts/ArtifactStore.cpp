#include "QuilloCore/Artifacts/ArtifactStore.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/ArtifactBundleWriter.h"
#include "QuilloCore/Artifacts/ArtifactFileError.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Artifacts/StagingDirectory.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;
namespace Layout = ArtifactBundleLayout;
using Error = ArtifactRepositoryError;

void requireSupportedSchemas(const ContextArtifactDraft& draft) {
  const std::int64_t snapshotVersion = draft.accessibilitySnapshot.schemaVersion;
  if (snapshotVersion < 1 || snapshotVersion > AccessibilitySnapshot::currentSchemaVersion)
    throw Error(Error::UnsupportedSchema{snapshotVersion});
  const std::int64_t observationVersion = draft.interfaceObservation.schemaVersion;
  if (observationVersion < 1 || observationVersion > InterfaceObservation::currentSchemaVersion)
    throw Error(Error::UnsupportedSchema{observationVersion});
}

ArtifactManifest manifestToStore(const ArtifactManifest& drafted) {
  ArtifactManifest manifest = drafted;
  manifest.schemaVersion = ArtifactManifest::currentSchemaVersion;
  manifest.contextProjectionVersion = ArtifactManifest::currentContextProjectionVersion;
  manifest.screenshotFilename = Layout::screenshotFilename;
  manifest.accessibilityFilename.reset();
  manifest.evidenceFilename = Layout::evidenceFilename;
  manifest.observationFilename = Layout::observationFilename;
  return manifest;
}

bool isNewer(const StoredArtifact& a, const StoredArtifact& b) {
  if (a.manifest.createdAt != b.manifest.createdAt) return a.manifest.createdAt > b.manifest.createdAt;
  return a.manifest.id < b.manifest.id;
}

/// Of two files that every artifact has; what they hold is seen when it is opened.
std::optional<ArtifactCondition> conditionOf(const ListedManifest& listed, Directory& bundle) {
  const ArtifactManifest& manifest = listed.manifest;
  const auto& evidence = manifest.evidenceFilename ? manifest.evidenceFilename : manifest.accessibilityFilename;
  std::string missing;
  for (const auto& name : {std::optional(manifest.screenshotFilename), evidence}) {
    if (!name || bundle.status(*name)) continue;
    missing += (missing.empty() ? "" : ", ") + *name;
  }
  if (!missing.empty()) return ArtifactCondition{ArtifactCondition::Kind::damaged, "missing: " + missing};
  if (listed.isPartial) return ArtifactCondition{ArtifactCondition::Kind::partial, {}};
  return std::nullopt;
}

}  // namespace

ArtifactStore::ArtifactStore(fs::path rootPath, Services services, ArtifactProjection projection)
    : rootPath_(std::move(rootPath)), services_(services), projection_(std::move(projection)) {}

fs::path ArtifactStore::bundlePath(const UUID& id) const {
  return rootPath_ / Layout::bundleName(id);
}

void ArtifactStore::prepare() {
  prepareRoot();
}

std::unique_ptr<Directory> ArtifactStore::prepareRoot() {
  auto root = services_.fileSystem.makeDirectories(rootPath_);
  StagingDirectory::removeAbandoned(*root, services_.clock.now());
  return root;
}

std::vector<StoredArtifact> ArtifactStore::list(ListingDetail detail) {
  return survey(detail).artifacts;
}

LibraryListing ArtifactStore::survey(ListingDetail detail) {
  const auto root = services_.fileSystem.openDirectory(rootPath_);
  LibraryListing listing;
  for (const DirectoryEntry& entry : root->entries()) {
    if (entry.kind != FileKind::directory || !Layout::isBundleName(entry.name)) continue;
    try {
      const auto bundle = root->openDirectory(entry.name);
      ListedManifest listed = ArtifactBundleReader(*bundle, entry.name).readListedManifest(detail);
      if (auto condition = conditionOf(listed, *bundle)) listing.conditions.emplace(listed.manifest.id, *condition);
      listing.artifacts.push_back({std::move(listed.manifest), rootPath_ / entry.name});
    } catch (const Error& error) {
      noteDamage(listing, *root, entry.name, error.what());
    } catch (const ArtifactFileError& error) {
      noteDamage(listing, *root, entry.name, error.what());
    } catch (const FileSystemError& error) {
      noteDamage(listing, *root, entry.name, error.what());
    }
  }
  std::ranges::stable_sort(listing.artifacts, isNewer);
  std::ranges::sort(listing.damagedBundles, {}, &DamagedBundle::id);
  return listing;
}

/// A damaged bundle does not take the others from the user. One that another process has just removed is none.
void ArtifactStore::noteDamage(LibraryListing& listing, Directory& root, const std::string& name, std::string reason) {
  const auto id = Layout::identifierOfBundleName(name);
  const auto status = root.status(name);
  if (id && status) listing.damagedBundles.push_back({*id, rootPath_ / name, std::move(reason), status->modifiedAt});
}

std::vector<std::string> ArtifactStore::contextTexts(const std::vector<UUID>& ids) {
  std::vector<std::string> texts;
  texts.reserve(ids.size());
  const auto root = services_.fileSystem.openDirectory(rootPath_);
  for (const UUID& id : ids) {
    const std::string name = Layout::bundleName(id);
    std::string& text = texts.emplace_back();
    try {
      const auto bundle = root->openDirectory(name);
      text = ArtifactBundleReader(*bundle, name).readManifest().contextText;
    } catch (const Error&) {
    } catch (const ArtifactFileError&) {
    } catch (const FileSystemError&) {
      // Damaged or gone: the listing tells.
    }
  }
  return texts;
}

std::vector<std::string> ArtifactStore::bundleNames() {
  std::vector<std::string> names;
  for (DirectoryEntry& entry : services_.fileSystem.openDirectory(rootPath_)->entries()) {
    if (entry.kind == FileKind::directory && Layout::isBundleName(entry.name)) names.push_back(std::move(entry.name));
  }
  std::ranges::sort(names);
  return names;
}

StoredArtifact ArtifactStore::create(const ContextArtifactDraft& draft, const std::function<void()>& checkpoint) {
  requireSupportedSchemas(draft);
  const auto root = prepareRoot();
  ArtifactManifest manifest = manifestToStore(draft.manifest);
  Layout::validate(manifest);
  const std::string name = Layout::bundleName(manifest.id);
  if (root->status(name)) throw Error(Error::ArtifactAlreadyExists{manifest.id});

  const ArtifactBundleFiles files = encodeBundle(manifest, draft);
  const std::string staging = StagingDirectory::name(manifest.id, services_.identifiers.makeUUID());
  try {
    writeBundle(*root, staging, name, files, checkpoint);
  } catch (const FileSystemError& error) {
    // Another process made the same artifact meanwhile.
    if (error.isSystemFailure(EEXIST) && root->status(name)) throw Error(Error::ArtifactAlreadyExists{manifest.id});
    throw;
  }
  return {std::move(manifest), rootPath_ / name};
}

bool ArtifactStore::exists(const fs::path& bundlePath) {
  try {
    const auto parent = services_.fileSystem.openDirectory(bundlePath.parent_path());
    return parent->status(bundlePath.filename().native()).has_value();
  } catch (const FileSystemError& error) {
    if (error.isSystemFailure(ENOENT)) return false;
    throw;
  }
}

LoadedArtifact ArtifactStore::load(const UUID& id) {
  const fs::path path = bundlePath(id);
  if (!exists(path)) throw Error(Error::ArtifactNotFound{id});
  return loadBundle(path);
}

LoadedArtifact ArtifactStore::loadBundle(const fs::path& bundlePath) {
  const auto parent = services_.fileSystem.openDirectory(bundlePath.parent_path());
  const auto bundle = parent->openDirectory(bundlePath.filename().native());
  return loadFrom(*bundle, bundlePath);
}

LoadedArtifact ArtifactStore::loadFrom(Directory& bundle, const fs::path& bundlePath) {
  const ArtifactBundleReader reader(bundle, bundlePath.filename().string());
  LoadedArtifact loaded;
  loaded.stored = {reader.readManifest(), bundlePath};
  ArtifactManifest& manifest = loaded.stored.manifest;
  loaded.screenshotPNG = reader.readScreenshot(manifest);
  loaded.accessibilitySnapshot = reader.readSnapshot(manifest);
  loaded.interfaceObservation = reader.readObservation(manifest, loaded.accessibilitySnapshot, projection_).observation;
  manifest.contextText = projection_.renderContextText(loaded.interfaceObservation);
  manifest.contextProjectionVersion = ArtifactManifest::currentContextProjectionVersion;
  return loaded;
}

StoredArtifact ArtifactStore::readBundleManifest(const fs::path& bundlePath) {
  const auto parent = services_.fileSystem.openDirectory(bundlePath.parent_path());
  const auto bundle = parent->openDirectory(bundlePath.filename().native());
  return {ArtifactBundleReader(*bundle, bundlePath.filename().string()).readManifest(), bundlePath};
}

StoredArtifact ArtifactStore::update(const StoredArtifact& stored, const ArtifactManifest& manifest) {
  if (!exists(stored.bundlePath)) throw Error(Error::ArtifactNotFound{stored.manifest.id});
  const auto parent = services_.fileSystem.openDirectory(stored.bundlePath.parent_path());
  const auto bundle = parent->openDirectory(stored.bundlePath.filename().native());
  const ArtifactManifest onDisk = ArtifactBundleReader(*bundle, stored.bundlePath.filename().string()).readManifest();

  ArtifactManifest updated = manifest;
  updated.screenshotFilename = onDisk.screenshotFilename;
  updated.accessibilityFilename = onDisk.accessibilityFilename;
  updated.evidenceFilename = onDisk.evidenceFilename;
  updated.observationFilename = onDisk.observationFilename;
  Layout::validate(updated);
  replaceManifest(*bundle, updated, services_.identifiers.makeUUID(), services_.clock.now());
  return {std::move(updated), stored.bundlePath};
}

std::optional<fs::path> ArtifactStore::moveToTrash(const UUID& id) {
  const fs::path path = bundlePath(id);
  if (!exists(path)) throw Error(Error::ArtifactNotFound{id});
  return moveBundleToTrash(path, id);
}

std::optional<fs::path> ArtifactStore::moveBundleToTrash(const fs::path& bundlePath, const std::optional<UUID>& id) {
  const auto fail = [&](std::string reason) {
    if (id) throw Error(Error::CouldNotMoveArtifactToTrash{*id, std::move(reason)});
    throw TrashError(std::move(reason));
  };
  std::optional<fs::path> newPath;
  try {
    newPath = services_.trash.moveToTrash(bundlePath);
  } catch (const std::exception& error) {
    fail(error.what());
  }
  if (exists(bundlePath)) fail("the bundle remained in its original location");
  return newPath;
}

void ArtifactStore::restoreFromTrash(const UUID& id, const fs::path& trashed) {
  const fs::path path = bundlePath(id);
  if (exists(path)) throw Error(Error::ArtifactAlreadyExists{id});
  services_.trash.restore(trashed, path);
}

fs::path defaultLibraryPath() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return fs::path(value == nullptr ? "" : value);
  };
  fs::path data = variable("XDG_DATA_HOME");
  if (!data.is_absolute()) data = variable("HOME") / ".local" / "share";
  return data / "Quillo" / "Artifacts";
}

}  // namespace quillo
