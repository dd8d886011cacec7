#include "QuilloCore/Semantics/CompoundControls.h"

#include <cstddef>
#include <span>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"

namespace quillo {
namespace {

bool absorbsLabels(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  return role == textField || role == textArea || role == searchField || role == comboBox;
}

bool isLabelledBeside(InterfaceSemanticRole role) {
  using enum InterfaceSemanticRole;
  return role == popUpButton || role == checkbox || role == radioButton || role == switchControl || role == slider ||
         role == stepper || role == progressIndicator;
}

class LabelAbsorption {
 public:
  LabelAbsorption(const RenderContext& context, RenderPlan& plan) : context_(context), plan_(plan) {}

  void absorbAmong(std::span<const ElementForest::Child> children) {
    for (std::size_t i = 0; i < children.size(); ++i) {
      const ElementIndex control = children[i].element;
      if (control == noElement || !context_.isInScope(control)) continue;
      const ElementIndex before = i > 0 ? children[i - 1].element : noElement;
      const ElementIndex after = i + 1 < children.size() ? children[i + 1].element : noElement;
      const ElementIndex label = isLabel(before, control) ? before : isLabel(after, control) ? after : noElement;
      if (label == noElement) continue;
      if (absorbsLabels(context_[control].role)) {
        plan_.compoundEditableControlIDs.insert(control);
        plan_.suppressedCompoundLabelElementIDs.insert(label);
      } else if (isLabelledBeside(context_[control].role)) {
        plan_.silentElementIDs.insert(label);
      }
    }
  }

 private:
  bool isLabel(ElementIndex text, ElementIndex control) const {
    const auto& label = context_[control].label;
    return text != noElement && context_.isInScope(text) && isLoneText(context_, plan_, text) && label &&
           isPrintable(*label) && agreeButForWhiteSpace(*label, context_.primaryText(text));
  }

  const RenderContext& context_;
  RenderPlan& plan_;
};

}  // namespace

void absorbAdjacentLabels(const RenderContext& context, RenderPlan& plan) {
  LabelAbsorption absorption(context, plan);
  for (const ElementIndex parent : context.forest().preorder()) {
    if (context.isInScope(parent)) absorption.absorbAmong(context.forest().children(parent));
  }
}

}  // namespace quillo
