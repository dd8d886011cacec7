#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// The bullets of list items (their numbers are worth a word), and scroll bars and value indicators that show no value.
void silenceOrnaments(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
