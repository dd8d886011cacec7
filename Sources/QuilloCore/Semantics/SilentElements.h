#pragma once

#include "QuilloCore/Semantics/RenderContext.h"
#include "QuilloCore/Semantics/RenderPlan.h"

namespace quillo {

/// The bullets of list items (their numbers are worth a word), and scroll bars and value indicators that show no value.
void silenceOrnaments(const RenderContext& context, RenderPlan& plan);

/// Nameless groups that group nothing: around no line at all, or around one line only when more children were there or
/// when that line is another such group's. Comes last, since it counts the lines that are left.
void silenceIdleContainers(const RenderContext& context, RenderPlan& plan);

}  // namespace quillo
