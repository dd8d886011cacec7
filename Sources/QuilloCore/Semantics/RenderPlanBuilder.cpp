#include "QuilloCore/Semantics/RenderPlanBuilder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "QuilloCore/Semantics/AdjacentTextRuns.h"
#include "QuilloCore/Semantics/AggregateCoverage.h"
#include "QuilloCore/Semantics/CompoundControls.h"
#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/NamingTexts.h"
#include "QuilloCore/Semantics/SemanticTokens.h"
#include "QuilloCore/Semantics/TabularRows.h"

namespace quillo {
namespace {

/// Containers that say nothing themselves and whose every child was silenced, as a paragraph's whose text the
/// document's content shows.
void findEmptiedContainers(const RenderContext& context, RenderPlan& plan) {
  using enum InterfaceSemanticRole;
  const ElementForest& forest = context.forest();
  for (std::size_t i = forest.size(); i-- > 0;) {
    const ElementIndex index = forest.preorder()[i];
    const InterfaceElement& element = context[index];
    const bool isContainer = element.role == section || element.role == group || element.role == unknown;
    const auto children = forest.children(index);
    if (!isContainer || !context.isInScope(index) || children.empty() || !context.primaryText(index).empty() ||
        element.content || element.isProtected || saysMoreThanItsTexts(element)) {
      continue;
    }
    const auto isGone = [&](ElementForest::Child child) {
      return child.element != noElement && context.isInScope(child.element) && plan.isSilent(child.element) &&
             (forest.children(child.element).empty() || plan.emptiedContainerIDs.contains(child.element));
    };
    if (std::ranges::all_of(children, isGone)) plan.emptiedContainerIDs.insert(index);
  }
}

}  // namespace

RenderPlan buildRenderPlan(const RenderContext& context, RenderingScope scope) {
  RenderPlan plan(context.forest().size(), std::move(scope));
  SemanticTokenizer tokenizer;
  absorbAdjacentLabels(context, plan);
  findPassiveRowElements(context, tokenizer, plan);
  findNamingTexts(context, tokenizer, plan);
  coverAggregateTexts(context, tokenizer, plan);
  mergeAdjacentTextRuns(context, plan);
  findEmptiedContainers(context, plan);
  return plan;
}

}  // namespace quillo
