#pragma once

#include <string>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/TextLines.h"

namespace quillo {

/// The element on one line as the map and the current state print it: a row by its cells' texts, a merged run with all
/// of its text.
std::string mapLine(const RenderContext& context, const RenderPlan& plan, ElementIndex element,
                    ElementLineOptions options = {});

/// The same for the current state, which stands apart: an element without a name of its own is told by the texts
/// inside.
std::string stateLine(const RenderContext& context, const RenderPlan& plan, ElementIndex element);

/// "## Interface map" with the tree from the root, and "### Additional interface elements" with those that the root
/// does not lead to.
void appendInterfaceMap(const RenderContext& context, const RenderPlan& plan, TextLines& lines);

}  // namespace quillo
