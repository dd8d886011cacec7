#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/SemanticTokens.h"

namespace quillo {

/// Some applications name a list item or a label with all that stands inside, also with the links, controls and nested
/// items that have lines of their own ("2. Shoes: boots, sandals" around a list of both). The line of such an element
/// keeps only what stands before these. A label of which nothing is left has no line.
void shortenGatheredNames(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan);

}  // namespace quillo
