#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "QuilloCore/Capture/ArtifactSource.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// What a bundle says of itself, in "manifest.json". Layout 3 is written; 1 and 2 are read.
struct ArtifactManifest {
  static constexpr std::int64_t currentSchemaVersion = 3;
  static constexpr std::int64_t currentContextProjectionVersion = 1;

  std::int64_t schemaVersion = currentSchemaVersion;
  UUID id;
  std::string title;  ///< the user's
  Date createdAt;     ///< whole seconds once stored
  Date modifiedAt;    ///< of the last edit
  ArtifactSource source;
  std::string annotations;  ///< the user's note
  std::string contextText;  ///< what a language model reads of the capture
  std::optional<std::int64_t> contextProjectionVersion;
  std::vector<std::string> tags;
  std::int64_t nodeCount = 0;
  std::int64_t characterCount = 0;
  std::string screenshotFilename;
  std::optional<std::string> accessibilityFilename;  ///< layouts 1 and 2
  std::optional<std::string> evidenceFilename;       ///< layout 3
  std::optional<std::string> observationFilename;

  friend bool operator==(const ArtifactManifest&, const ArtifactManifest&) = default;
};

template <>
struct JsonFields<ArtifactManifest> {
  using R = ArtifactManifest;
  static constexpr auto table = std::tuple{jsonField("schemaVersion", &R::schemaVersion),
                                           jsonField("id", &R::id),
                                           jsonField("title", &R::title),
                                           jsonField("createdAt", &R::createdAt),
                                           jsonField("modifiedAt", &R::modifiedAt),
                                           jsonField("source", &R::source),
                                           jsonField("annotations", &R::annotations),
                                           jsonField("contextText", &R::contextText),
                                           jsonField("contextProjectionVersion", &R::contextProjectionVersion),
                                           jsonField("tags", &R::tags),
                                           jsonField("nodeCount", &R::nodeCount),
                                           jsonField("characterCount", &R::characterCount),
                                           jsonField("screenshotFilename", &R::screenshotFilename),
                                           jsonField("accessibilityFilename", &R::accessibilityFilename),
                                           jsonField("evidenceFilename", &R::evidenceFilename),
                                           jsonField("observationFilename", &R::observationFilename)};
};

}  // namespace quillo
