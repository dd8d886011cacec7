#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// The library for programs that must not block: an actor over the store. Its operations are queued on a thread of its
/// own and run one at a time to their end, in the order in which they were begun; a caller that is cancelled is
/// released at once, and an operation that has begun is finished nevertheless.
///
/// The repository must outlive the tasks that it returns; its end waits for what is queued. Errors are the store's.
class ArtifactRepository {
 public:
  explicit ArtifactRepository(ArtifactStore store);

  /// From any thread.
  std::filesystem::path bundlePath(const UUID& id) const { return store_.bundlePath(id); }

  Task<> prepare();
  Task<std::vector<StoredArtifact>> list(ListingDetail detail = ListingDetail::everything);
  Task<LibraryListing> survey(ListingDetail detail);
  /// Both, one after the other.
  Task<LibraryListing> prepareAndSurvey(ListingDetail detail);
  Task<std::vector<std::string>> contextTexts(std::vector<UUID> ids);
  Task<StoredArtifact> create(ContextArtifactDraft draft);
  Task<LoadedArtifact> load(UUID id);
  Task<StoredArtifact> update(StoredArtifact stored, ArtifactManifest manifest);
  Task<std::optional<std::filesystem::path>> moveToTrash(UUID id);
  Task<> restoreFromTrash(UUID id, std::filesystem::path trashed);

 private:
  ArtifactStore store_;
  SerialQueue queue_;  // ends first
};

}  // namespace quillo
