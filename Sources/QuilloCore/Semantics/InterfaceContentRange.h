#pragma once

#include <string_view>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A range of an application's text as the range of the same characters in the text that an observation carries:
/// trimmed, with line breaks as LF. What was selected behind the carried text stays behind it. A range that does not
/// lie within the application's text is returned as it is, for nothing can be said of it.
ArtifactTextRange rangeInCleanText(std::string_view rawText, const ArtifactTextRange& range);

}  // namespace quillo
