#pragma once

#include "QuilloCore/Semantics/InterfaceObservation.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/TextLines.h"

namespace quillo {

/// "## Coverage": what was mapped, left out or consolidated, with counts, and what limits and problems the capture met.
void appendCoverage(const InterfaceObservationCompleteness& completeness, const RenderPlan& plan, TextLines& lines);

}  // namespace quillo
