#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/SemanticTokens.h"

namespace quillo {

/// Finds the texts inside a button, link, heading and their like from which it has its name, and the caption inside a
/// group that is its label: the name on the outer line has already printed them.
void findNamingTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan);

}  // namespace quillo
