#include "QuilloCore/Semantics/RenderPlanBuilder.h"

#include <utility>

#include "QuilloCore/Semantics/AdjacentTextRuns.h"
#include "QuilloCore/Semantics/AggregateCoverage.h"
#include "QuilloCore/Semantics/CompoundControls.h"
#include "QuilloCore/Semantics/GatheredNames.h"
#include "QuilloCore/Semantics/IdleContainers.h"
#include "QuilloCore/Semantics/NamingTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Semantics/SemanticTokens.h"
#include "QuilloCore/Semantics/SilentElements.h"
#include "QuilloCore/Semantics/TabularRows.h"

namespace quillo {
RenderPlan buildRenderPlan(const RenderContext& context, RenderingScope scope) {
  RenderPlan plan(context.forest().size(), std::move(scope));
  SemanticTokenizer tokenizer;
  silenceOrnaments(context, plan);
  findRepeatedExplanations(context, plan);
  findPassiveRowElements(context, tokenizer, plan);
  shortenGatheredNames(context, tokenizer, plan);
  findNamingTexts(context, tokenizer, plan);
  absorbAdjacentLabels(context, plan);
  coverAggregateTexts(context, tokenizer, plan);
  mergeAdjacentTextRuns(context, plan);
  silenceIdleContainers(context, plan);
  return plan;
}

}  // namespace quillo
