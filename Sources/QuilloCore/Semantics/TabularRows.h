#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/SemanticTokens.h"

namespace quillo {

/// Finds what a row's line of cell texts stands for (its cells and their texts), the rows that the line of column
/// headers stands for, and the rows that have nothing to say. An element that is a whole cell and says more than its
/// text (a link) keeps its line, and when it is the only such one in the row it stands without the name.
void findPassiveRowElements(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan);

}  // namespace quillo
