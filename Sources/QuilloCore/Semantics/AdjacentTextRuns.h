#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// Joins texts that follow one another in one line of the window, as when one sentence was split by its formatting. The
/// first of them prints all. Comes after everything that silences single texts.
void mergeAdjacentTextRuns(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
