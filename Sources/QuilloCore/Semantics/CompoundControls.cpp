#include "QuilloCore/Semantics/CompoundControls.h"

#include "QuilloCore/Semantics/InterfaceElementTexts.h"

namespace quillo {
namespace {

bool absorbsLabels(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  return role == textField || role == textArea || role == searchField || role == comboBox;
}

}  // namespace

void absorbAdjacentLabels(const RenderContext& context, RenderPlan& plan) {
  for (const ElementIndex parent : context.forest().preorder()) {
    if (!context.isInScope(parent)) continue;
    ElementIndex previous = noElement;
    for (const ElementForest::Child child : context.forest().children(parent)) {
      if (child.element != noElement && previous != noElement && context.isInScope(child.element) &&
          context.isPlainTextLeaf(previous)) {
        const InterfaceElement& control = context[child.element];
        if (absorbsLabels(control.role) && control.label && isPrintable(*control.label) &&
            agreeButForWhiteSpace(*control.label, context.primaryText(previous))) {
          plan.compoundEditableControlIDs.insert(child.element);
          plan.suppressedCompoundLabelElementIDs.insert(previous);
        }
      }
      previous = child.element;
    }
  }
}

}  // namespace quillo
