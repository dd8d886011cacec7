#pragma once

#include <string>

#include "QuilloCore/Artifacts/ArtifactManifest.h"

namespace quillo {

/// Renders a stored artifact into the text that is pasted after its screenshot.
namespace ArtifactPasteTextRenderer {

/// Pure and total. Lines are joined with LF; there is no final LF. Title, application, window and bundle identifier
/// stand as stored unless they hold line breaks or control characters: captured text must not forge lines of ours.
std::string render(const ArtifactManifest& manifest);

}  // namespace ArtifactPasteTextRenderer
}  // namespace quillo
