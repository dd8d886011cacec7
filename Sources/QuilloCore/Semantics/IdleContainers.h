#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// Silences nameless groups of which a reader learns nothing: around no line or one line, the only group of what stands
/// around them, and those whose beginning and end the lines tell without them (a paragraph between lists, a section
/// that begins with a heading). Nameless items and lists around one line go as well, and the picture that is all there
/// is of a link. Comes last, since it looks at the lines that are left.
void silenceIdleContainers(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
