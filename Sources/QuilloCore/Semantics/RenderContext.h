#pragma once

#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/ElementForest.h"
#include "QuilloCore/Semantics/RenderingScope.h"

namespace quillo {

/// What every step of rendering one observation looks up again and again.
class RenderContext {
 public:
  RenderContext(const ElementForest& forest, const RenderingScope& scope);

  const ElementForest& forest() const { return forest_; }
  const InterfaceElement& operator[](ElementIndex element) const { return forest_[element]; }

  bool isInScope(ElementIndex element) const { return isInScope_[element]; }

  /// Empty when the element has none.
  std::string_view primaryText(ElementIndex element) const { return primaryTexts_[element]; }

  /// A text that has one text and nothing else to say.
  bool isPlainText(ElementIndex element) const { return isPlainText_[element]; }
  bool isPlainTextLeaf(ElementIndex element) const {
    return isPlainText_[element] && forest_.children(element).empty();
  }

 private:
  const ElementForest& forest_;
  std::vector<bool> isInScope_;
  std::vector<std::string_view> primaryTexts_;
  std::vector<bool> isPlainText_;
};

}  // namespace quillo
