#pragma once

#include <vector>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// Explanations, which no window shows until one asks for them, are told once of elements of one role and name.
void findRepeatedExplanations(const RenderContext& context, RenderPlan& plan);

/// What is printed below the element's line: its details but for repeated explanations and what a row's line holds.
std::vector<ElementDetail> printedDetails(const RenderContext& context, const RenderPlan& plan, ElementIndex element);

/// Whether the element has nothing to print but its role and its name.
bool saysNothingButName(const RenderContext& context, const RenderPlan& plan, ElementIndex index);

/// Whether the element is a text that is all that is printed of its subtree.
bool isLoneText(const RenderContext& context, const RenderPlan& plan, ElementIndex element);

}  // namespace quillo
