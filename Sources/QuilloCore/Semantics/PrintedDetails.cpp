#include "QuilloCore/Semantics/PrintedDetails.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <tuple>

#include "QuilloCore/Semantics/InterfaceElementLine.h"

namespace quillo {
namespace {

constexpr std::string_view helpLabel = "help";
constexpr std::string_view descriptionLabel = "description";

std::vector<ElementDetail> ownDetails(const RenderContext& context, ElementIndex index) {
  const InterfaceElement& element = context[index];
  if (!hasRowReference(element)) return distinctDetails(element, context.primaryText(index));
  std::vector<ElementDetail> details = distinctDetails(element, {});
  std::erase_if(details, [&](const ElementDetail& detail) { return rowHolds(element, detail.text); });
  return details;
}

/// Whether the element is a group of which nobody sees a name without asking.
bool isNamedByHelpAlone(const InterfaceElement& element, std::string_view name) {
  using enum InterfaceSemanticRole;
  const bool isGroup = element.role == group || element.role == section || element.role == unknown;
  return isGroup && element.help && element.help->data() == name.data();
}

}  // namespace

void findRepeatedExplanations(const RenderContext& context, RenderPlan& plan) {
  std::set<std::tuple<InterfaceSemanticRole, std::string_view, std::string_view>> told;
  for (const ElementIndex index : context.forest().preorder()) {
    const InterfaceElement& element = context[index];
    if (!context.isInScope(index) || (!element.help && !element.description)) continue;
    const std::string_view name = context.primaryText(index);
    if (name.empty()) continue;
    if (isNamedByHelpAlone(element, name) && !told.emplace(element.role, std::string_view(), name).second) {
      plan.printedNames.emplace(index, "");
    }
    for (const ElementDetail& detail : ownDetails(context, index)) {
      if (detail.label != helpLabel && detail.label != descriptionLabel) continue;
      if (told.emplace(element.role, name, detail.text).second) continue;
      (detail.label == helpLabel ? plan.toldHelpIDs : plan.toldDescriptionIDs).insert(index);
    }
  }
}

std::vector<ElementDetail> printedDetails(const RenderContext& context, const RenderPlan& plan, ElementIndex element) {
  std::vector<ElementDetail> details = ownDetails(context, element);
  std::erase_if(details, [&](const ElementDetail& detail) {
    return (detail.label == helpLabel && plan.toldHelpIDs.contains(element)) ||
           (detail.label == descriptionLabel && plan.toldDescriptionIDs.contains(element));
  });
  return details;
}

bool saysNothingButName(const RenderContext& context, const RenderPlan& plan, ElementIndex index) {
  const InterfaceElement& element = context[index];
  return !element.isProtected && !element.content && !saysMoreThanItsTexts(element) &&
         !printsStringValue(element, context.primaryText(index)) && printedDetails(context, plan, index).empty();
}

bool isLoneText(const RenderContext& context, const RenderPlan& plan, ElementIndex element) {
  constexpr std::size_t partsAsked = 8;
  if (!context.isPlainText(element) || plan.isSilent(element)) return false;
  const auto parts = context.forest().descendants(element);
  return parts.size() <= partsAsked &&
         std::ranges::all_of(parts, [&](ElementIndex part) { return plan.isSilent(part); });
}

}  // namespace quillo
