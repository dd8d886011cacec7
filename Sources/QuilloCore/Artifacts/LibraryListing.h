#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactModels.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// A bundle whose manifest cannot be read. Its directory names it, so that it can be moved to the Trash.
struct DamagedBundle {
  UUID id;
  std::filesystem::path bundlePath;  ///< absolute
  std::string reason;                ///< in words for the user
  Date modifiedAt;                   ///< of the directory; when it was captured is not known

  friend bool operator==(const DamagedBundle&, const DamagedBundle&) = default;
};

/// What a listing tells of an artifact beside its manifest, as far as that is seen without reading its other files.
struct ArtifactCondition {
  enum class Kind : std::uint8_t {
    partial,  ///< the capture reached a limit
    damaged,  ///< files are missing
  };

  Kind kind = Kind::partial;
  std::string reason;  ///< of damage, in words for the user

  friend bool operator==(const ArtifactCondition&, const ArtifactCondition&) = default;
};

/// The whole library, with what is wrong in it.
struct LibraryListing {
  std::vector<StoredArtifact> artifacts;  ///< newest first, of equal dates the lower identifier first
  std::vector<DamagedBundle> damagedBundles;
  std::map<UUID, ArtifactCondition> conditions;  ///< of the artifacts that are not simply complete

  friend bool operator==(const LibraryListing&, const LibraryListing&) = default;
};

}  // namespace quillo
