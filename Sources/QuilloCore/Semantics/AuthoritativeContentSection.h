#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/TextLines.h"

namespace quillo {

/// "## Authoritative content": the aggregate texts that the plan emits, with selection, caret and visible range marked.
void appendAuthoritativeContent(const RenderContext& context, const RenderPlan& plan, TextLines& lines);

}  // namespace quillo
