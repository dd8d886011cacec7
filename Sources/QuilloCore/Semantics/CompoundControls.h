#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// Lets each text field, text area, search field and combo box absorb the text directly before it that equals its
/// label, white space aside.
void absorbAdjacentLabels(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
