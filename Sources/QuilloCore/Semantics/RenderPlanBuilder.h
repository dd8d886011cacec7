#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

RenderPlan buildRenderPlan(const RenderContext& context, RenderingScope scope);

}  // namespace quillo
