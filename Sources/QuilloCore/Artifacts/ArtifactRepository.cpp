#include "QuilloCore/Artifacts/ArtifactRepository.h"

#include <utility>

namespace quillo {

ArtifactRepository::ArtifactRepository(ArtifactStore store) : store_(std::move(store)), queue_("artifacts") {}

Task<> ArtifactRepository::prepare() {
  return queue_.run([this] { store_.prepare(); });
}

Task<std::vector<StoredArtifact>> ArtifactRepository::list(ListingDetail detail) {
  return queue_.run([this, detail] { return store_.list(detail); });
}

Task<LibraryListing> ArtifactRepository::survey(ListingDetail detail) {
  return queue_.run([this, detail] { return store_.survey(detail); });
}

Task<LibraryListing> ArtifactRepository::prepareAndSurvey(ListingDetail detail) {
  return queue_.run([this, detail] {
    store_.prepare();
    return store_.survey(detail);
  });
}

Task<std::vector<std::string>> ArtifactRepository::contextTexts(std::vector<UUID> ids) {
  return queue_.run([this, ids = std::move(ids)] { return store_.contextTexts(ids); });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): it is moved to the queue, and the caller may be gone by then.
Task<StoredArtifact> ArtifactRepository::create(ContextArtifactDraft draft) {
  return queue_.run([this, draft = std::move(draft)] { return store_.create(draft); });
}

Task<LoadedArtifact> ArtifactRepository::load(UUID id) {
  return queue_.run([this, id] { return store_.load(id); });
}

Task<StoredArtifact> ArtifactRepository::update(StoredArtifact stored, ArtifactManifest manifest) {
  return queue_.run(
      [this, stored = std::move(stored), manifest = std::move(manifest)] { return store_.update(stored, manifest); });
}

Task<std::optional<std::filesystem::path>> ArtifactRepository::moveToTrash(UUID id) {
  return queue_.run([this, id] { return store_.moveToTrash(id); });
}

Task<> ArtifactRepository::restoreFromTrash(UUID id, std::filesystem::path trashed) {
  return queue_.run([this, id, trashed = std::move(trashed)] { store_.restoreFromTrash(id, trashed); });
}

}  // namespace quillo
