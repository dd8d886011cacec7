#pragma once

#include <string_view>

#include "QuilloCore/Artifacts/ArtifactManifest.h"

namespace quillo {

/// Whether every word of the query occurs in the title, the note, the tags, the application's name or the window's
/// title. Letter case does not count; an empty query finds everything.
bool matchesSearch(const ArtifactManifest& manifest, std::string_view query);

}  // namespace quillo
