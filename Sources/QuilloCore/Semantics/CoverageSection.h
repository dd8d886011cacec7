#pragma once

#include <string_view>

#include "QuilloCore/Semantics/InterfaceObservation.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/TextLines.h"

namespace quillo {

/// "## Coverage": what was mapped, left out or consolidated, with counts, and what limits and problems the capture met.
void appendCoverage(const InterfaceObservationCompleteness& completeness, const RenderPlan& plan, TextLines& lines);

/// Whether a rendered context text says that the source capture reached a limit.
bool saysPartialObservation(std::string_view contextText);

}  // namespace quillo
