#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/SemanticTokens.h"

namespace quillo {

/// Decides for each aggregate text of a document or editor whether it is emitted in full, reduced to what its
/// descendants do not print, or left to them or to an enclosing owner.
void coverAggregateTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan);

}  // namespace quillo
