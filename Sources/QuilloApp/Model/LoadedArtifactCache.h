#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "QuilloApp/Model/OpenArtifact.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// The artifacts that were looked at last.
class LoadedArtifactCache {
 public:
  static constexpr std::size_t loadedArtifactCacheLimit = 3;

  /// Counts as a look at it.
  std::optional<OpenArtifact> find(const UUID& id);

  /// Counts as a look at it; what was looked at longest ago goes when there are too many.
  void insert(OpenArtifact artifact);
  /// In place of what is held of that artifact, if anything is.
  void replace(OpenArtifact artifact);
  void remove(const UUID& id);
  void removeIf(const std::function<bool(const OpenArtifact&)>& condition);

  bool contains(const UUID& id) const { return loadedArtifactCache_.contains(id); }

 private:
  void touch(const UUID& id);

  std::map<UUID, OpenArtifact> loadedArtifactCache_;
  std::vector<UUID> loadedArtifactRecency_;  // most recent last
};

}  // namespace quillo
