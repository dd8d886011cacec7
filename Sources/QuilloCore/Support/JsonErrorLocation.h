#pragma once

#include <cstddef>
#include <string_view>

#include "QuilloCore/Support/JsonError.h"

namespace quillo {

/// Finds where and why a text that the parser refused is not JSON. The fast parser does not say where it stopped, so a
/// refused text is scanned once more, slowly. `fallbackReason` is used when the scan finds nothing wrong.
JsonError locateJsonError(std::string_view text, std::size_t maximumDepth, std::string_view fallbackReason);

}  // namespace quillo
