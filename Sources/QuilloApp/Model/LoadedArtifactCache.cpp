#include "QuilloApp/Model/LoadedArtifactCache.h"

#include <utility>

namespace quillo {

std::optional<OpenArtifact> LoadedArtifactCache::find(const UUID& id) {
  const auto found = loadedArtifactCache_.find(id);
  if (found == loadedArtifactCache_.end()) return std::nullopt;
  touch(id);
  return found->second;
}

void LoadedArtifactCache::insert(OpenArtifact artifact) {
  const UUID id = artifact.id();
  loadedArtifactCache_.insert_or_assign(id, std::move(artifact));
  touch(id);
  if (loadedArtifactRecency_.size() > loadedArtifactCacheLimit) remove(UUID(loadedArtifactRecency_.front()));
}

void LoadedArtifactCache::replace(OpenArtifact artifact) {
  const auto found = loadedArtifactCache_.find(artifact.id());
  if (found != loadedArtifactCache_.end()) found->second = std::move(artifact);
}

void LoadedArtifactCache::remove(const UUID& id) {
  std::erase(loadedArtifactRecency_, id);
  loadedArtifactCache_.erase(id);
}

void LoadedArtifactCache::removeIf(const std::function<bool(const OpenArtifact&)>& condition) {
  std::vector<UUID> removed;
  for (const auto& [id, artifact] : loadedArtifactCache_) {
    if (condition(artifact)) removed.push_back(id);
  }
  for (const UUID& id : removed) remove(id);
}

void LoadedArtifactCache::touch(const UUID& id) {
  std::erase(loadedArtifactRecency_, id);
  loadedArtifactRecency_.push_back(id);
}

}  // namespace quillo
