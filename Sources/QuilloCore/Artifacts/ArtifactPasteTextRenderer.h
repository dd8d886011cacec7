#pragma once

#include <string>

#include "QuilloCore/Artifacts/ArtifactManifest.h"

namespace quillo {

/// Renders a stored artifact into the text that is pasted after its screenshot.
namespace ArtifactPasteTextRenderer {

/// Pure and total. Lines are joined with LF; there is no final LF. Title, source and note stand as they are stored:
/// what is captured was brought to one line when it entered, and what the user writes is the user's.
std::string render(const ArtifactManifest& manifest);

}  // namespace ArtifactPasteTextRenderer
}  // namespace quillo
