#include "QuilloCore/Semantics/RenderContext.h"

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"

namespace quillo {

RenderContext::RenderContext(const ElementForest& forest, const RenderingScope& scope)
    : forest_(forest), isInScope_(forest.size()), primaryTexts_(forest.size()), isPlainText_(forest.size()) {
  for (ElementIndex i = 0; i < forest.size(); ++i) {
    isInScope_[i] = scope.includedElements.contains(i);
    if (!isInScope_[i]) continue;
    const InterfaceElement& element = forest[i];
    primaryTexts_[i] = quillo::primaryText(element);
    isPlainText_[i] = element.role == InterfaceSemanticRole::text && !element.isProtected && !element.content &&
                      !primaryTexts_[i].empty() && !saysMoreThanItsTexts(element) &&
                      !printsStringValue(element, primaryTexts_[i]) &&
                      distinctDetails(element, primaryTexts_[i]).empty();
  }
}

}  // namespace quillo
