#include "QuilloCore/Semantics/RenderPlan.h"

#include <utility>

namespace quillo {

RenderPlan::RenderPlan(std::size_t elementCount, RenderingScope renderingScope)
    : authoritativeContentIDs(elementCount),
      suppressedAggregateContentIDs(elementCount),
      partiallyCoveredAggregateContentIDs(elementCount),
      suppressedNestedContentIDs(elementCount),
      coveredTextElementIDs(elementCount),
      compoundEditableControlIDs(elementCount),
      suppressedCompoundLabelElementIDs(elementCount),
      suppressedMergedTextElementIDs(elementCount),
      emptyTabularRowIDs(elementCount),
      scopeSuppressedAggregateContentIDs(elementCount),
      scope(std::move(renderingScope)),
      silentElementIDs(elementCount),
      namedAroundElementIDs(elementCount) {}

bool RenderPlan::isSilent(ElementIndex element) const {
  return coveredTextElementIDs.contains(element) || suppressedCompoundLabelElementIDs.contains(element) ||
         suppressedMergedTextElementIDs.contains(element) || emptyTabularRowIDs.contains(element) ||
         silentElementIDs.contains(element);
}

}  // namespace quillo
