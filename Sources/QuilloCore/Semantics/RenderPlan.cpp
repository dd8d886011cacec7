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
      toldHelpIDs(elementCount),
      toldDescriptionIDs(elementCount) {}

std::string_view RenderPlan::printedName(ElementIndex element, std::string_view primaryText) const {
  const auto printed = printedNames.find(element);
  return printed == printedNames.end() ? primaryText : std::string_view(printed->second);
}

bool RenderPlan::isSilent(ElementIndex element) const {
  return coveredTextElementIDs.contains(element) || suppressedCompoundLabelElementIDs.contains(element) ||
         suppressedMergedTextElementIDs.contains(element) || emptyTabularRowIDs.contains(element) ||
         silentElementIDs.contains(element);
}

}  // namespace quillo
