#include "QuilloCore/Semantics/TabularRows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

bool isRow(InterfaceSemanticRole role) {
  return role == row || role == treeItem;
}

bool isPassiveRole(InterfaceSemanticRole role) {
  return role == cell || role == text || role == group || role == section || role == unknown;
}

bool hasVisibleCell(const InterfaceElement& element) {
  const auto& values = element.properties->rowValues;
  return values && std::ranges::any_of(*values, hasVisibleText);
}

/// What a row's line of cell texts holds, to be asked for the texts inside the row.
class RowTexts {
 public:
  RowTexts(const InterfaceElement& element, SemanticTokenizer& tokenizer)
      : values_(*element.properties->rowValues), isClaimed_(values_.size()), tokenizer_(tokenizer) {}

  bool holds(std::string_view text) { return cellOf(text).has_value(); }

  /// The first cell with the text.
  std::optional<std::size_t> cellOf(std::string_view text) {
    words_.clear();
    tokenizer_.appendWords(text, words_);
    if (words_.empty()) {
      const auto isText = [&](const std::string& value) { return agreeButForWhiteSpace(value, text); };
      const auto found = std::ranges::find_if(values_, isText);
      return found == values_.end() ? std::nullopt : std::optional(std::size_t(found - values_.begin()));
    }
    if (!index_) index_.emplace(wordsOfCells());
    const auto place = index_->find(words_, 0, index_->size());
    if (!place) return std::nullopt;
    return std::size_t(std::ranges::upper_bound(cellEnds_, *place) - cellEnds_.begin());
  }

  /// Whether the text is a whole cell's that was not claimed before.
  bool claimCell(std::string_view text) {
    if (text.empty()) return false;
    for (std::size_t i = 0; i < values_.size(); ++i) {
      if (isClaimed_[i] || !agreeButForWhiteSpace(values_[i], text)) continue;
      isClaimed_[i] = true;
      return true;
    }
    return false;
  }

 private:
  static constexpr std::uint32_t cellBoundary = UINT32_MAX - 1;

  std::vector<std::uint32_t> wordsOfCells() {
    std::vector<std::uint32_t> words;
    for (const std::string& value : values_) {
      tokenizer_.appendWords(value, words);
      words.push_back(cellBoundary);
      cellEnds_.push_back(words.size());
    }
    return words;
  }

  const std::vector<std::string>& values_;
  std::vector<bool> isClaimed_;
  SemanticTokenizer& tokenizer_;
  std::optional<TokenSequenceIndex> index_;
  std::vector<std::size_t> cellEnds_;
  std::vector<std::uint32_t> words_;
};

class PassiveRowElements {
 public:
  PassiveRowElements(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan)
      : context_(context), tokenizer_(tokenizer), plan_(plan) {}

  void run() {
    for (const ElementIndex element : context_.forest().preorder()) {
      if (!context_.isInScope(element) || !hasRowReference(context_[element])) continue;
      if (repeatsColumnHeaders(context_[element])) plan_.silentElementIDs.insert(element);
      findInside(element);
    }
    findEmptyRows();
  }

 private:
  static bool repeatsColumnHeaders(const InterfaceElement& element) {
    const InterfaceElementProperties& properties = *element.properties;
    return properties.columnHeaders == properties.rowValues && !saysMoreThanItsTexts(element) &&
           distinctDetails(element, primaryText(element)).empty();
  }

  void findInside(ElementIndex rowElement) {
    const ElementForest& forest = context_.forest();
    RowTexts texts(context_[rowElement], tokenizer_);
    std::vector<ElementIndex> beside;
    Controls controls;
    const std::size_t end = forest.subtreeEnd(rowElement);
    for (std::size_t i = forest.position(rowElement) + 1; i < end;) {
      const ElementIndex element = forest.preorder()[i];
      const bool isOtherRow = hasRowReference(context_[element]);
      if (!isOtherRow && context_.isInScope(element)) {
        if (isStoodForBy(texts, element)) {
          plan_.silentElementIDs.insert(element);
        } else {
          beside.push_back(element);
          if (const auto cell = cellOfControl(texts, element))
            controls.push_back({element, context_[element].role, *cell});
        }
      }
      i = isOtherRow ? forest.subtreeEnd(element) : i + 1;
    }
    silenceAsBefore(rowElement, std::move(controls));
    std::vector<ElementIndex> wholeCells;
    for (const ElementIndex element : beside) {
      if (!plan_.isSilent(element) && texts.claimCell(context_.primaryText(element))) wholeCells.push_back(element);
    }
    // Of several nameless ones a reader could not tell which is which.
    if (wholeCells.size() == 1) plan_.printedNames.emplace(wholeCells.front(), "");
  }

  /// What stands in a row's cells beside texts: a link in the first, a button in the fourth.
  struct Control {
    ElementIndex element;
    InterfaceSemanticRole role;
    std::size_t cell;
  };
  using Controls = std::vector<Control>;

  /// The cell that holds the name of a control that has nothing else to say.
  std::optional<std::size_t> cellOfControl(RowTexts& texts, ElementIndex element) const {
    const bool isNamed = !context_.primaryText(element).empty() && saysNothingButName(context_, plan_, element);
    return isNamed ? texts.cellOf(context_.primaryText(element)) : std::nullopt;
  }

  /// What the controls are is told in the first row that has such ones in these cells, and of its table's next rows
  /// when they differ.
  void silenceAsBefore(ElementIndex rowElement, Controls controls) {
    if (controls.empty()) return;
    Controls& told = controlsOfTable_[context_.forest().parent(rowElement)];
    const auto isSame = [](const Control& a, const Control& b) { return a.role == b.role && a.cell == b.cell; };
    if (!std::ranges::equal(controls, told, isSame)) {
      told = std::move(controls);
      return;
    }
    for (const Control& control : controls) plan_.silentElementIDs.insert(control.element);
  }

  bool isStoodForBy(RowTexts& texts, ElementIndex index) const {
    const InterfaceElement& element = context_[index];
    if (!isPassiveRole(element.role) || element.isProtected || saysMoreThanItsTexts(element)) return false;
    const std::string_view primary = context_.primaryText(index);
    if (!primary.empty() && !texts.holds(primary)) return false;
    if (printsStringValue(element, primary) && !texts.holds(printableStringValue(element))) return false;
    return std::ranges::all_of(distinctDetails(element, primary),
                               [&](const ElementDetail& detail) { return texts.holds(detail.text); });
  }

  /// Rows in whose whole subtree nothing would be printed but the names of roles.
  void findEmptyRows() {
    const ElementForest& forest = context_.forest();
    std::vector<bool> hasSubstance(forest.size());
    for (std::size_t i = forest.size(); i-- > 0;) {
      const ElementIndex element = forest.preorder()[i];
      if (!context_.isInScope(element)) continue;
      if (!hasSubstance[element]) hasSubstance[element] = hasOwnSubstance(element);
      const ElementIndex parent = forest.parent(element);
      if (hasSubstance[element]) {
        if (parent != noElement) hasSubstance[parent] = true;
      } else if (isRow(context_[element].role)) {
        plan_.emptyTabularRowIDs.insert(element);
      }
    }
  }

  bool hasOwnSubstance(ElementIndex index) const {
    const InterfaceElement& element = context_[index];
    const bool isEmptyByRole = isPassiveRole(element.role) || isRow(element.role) || element.role == column;
    if (!isEmptyByRole || element.isProtected || element.content || saysMoreThanItsTexts(element)) return true;
    if (!context_.primaryText(index).empty() || printsStringValue(element, {}) || hasVisibleCell(element)) return true;
    const bool hasMissingChild = std::ranges::any_of(
        context_.forest().children(index), [](ElementForest::Child child) { return child.element == noElement; });
    return hasMissingChild || !distinctDetails(element, {}).empty() ||
           (isRow(element.role) && hasActionOrIdentifier(element));
  }

  /// Actions that only follow from the role are no state of the row's own.
  static bool hasActionOrIdentifier(const InterfaceElement& rowElement) {
    const auto isListed = [](const InterfaceAction& action) {
      return action.source == InterfaceActionSource::accessibility;
    };
    return !rowElement.identifiers.empty() || std::ranges::any_of(rowElement.actions, isListed);
  }

  const RenderContext& context_;
  SemanticTokenizer& tokenizer_;
  RenderPlan& plan_;
  std::unordered_map<ElementIndex, Controls> controlsOfTable_;
};

}  // namespace

void findPassiveRowElements(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan) {
  PassiveRowElements(context, tokenizer, plan).run();
}

}  // namespace quillo
