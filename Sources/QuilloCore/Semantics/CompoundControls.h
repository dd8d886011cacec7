#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// Lets each text field, text area, search field and combo box absorb the text directly before it that equals its
/// label, white space aside. Other controls that are labelled by a text beside them (a check box, a slider) silence it
/// as well, but are not called editable.
void absorbAdjacentLabels(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
