#pragma once

#include <span>
#include <string>
#include <string_view>

#include "QuilloCore/Semantics/SemanticTokens.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"

namespace quillo {

/// The stretches of a text whose tokens were not consumed, each with its place in UTF-16 code units:
///
///     uncovered source span (UTF-16 120 to 348 of 2048): the text as it stands there,
///       its further lines indented
///
/// Punctuation that touches a span belongs to it. Spans are separated by line feeds.
std::string uncoveredSpans(std::string_view text, std::span<const SemanticToken> tokens,
                           const TokenSequenceIndex& index);

}  // namespace quillo
