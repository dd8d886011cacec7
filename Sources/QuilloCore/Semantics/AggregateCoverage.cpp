#include "QuilloCore/Semantics/AggregateCoverage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/AggregateMatching.h"
#include "QuilloCore/Semantics/AuthoritativeTextMarking.h"
#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"
#include "QuilloCore/Semantics/UncoveredSpans.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// How many enclosing owners are asked whether they hold a nested text, the outermost first.
constexpr std::size_t enclosingOwnersAsked = 8;
/// Looks at descendants for each element of the observation; owners nested deeper than this are emitted unexamined.
constexpr std::size_t visitsPerElement = 16;

bool isEditor(InterfaceSemanticRole role) {
  return role == textArea || role == textField || role == searchField || role == comboBox;
}

bool isOwner(const InterfaceElement& element) {
  return element.content && !element.isProtected && hasVisibleText(*element.content);
}

bool hasRangeToMark(const InterfaceElement& element) {
  return hasMarkers(markAuthoritativeText(*element.content, element.properties->selectedTextRange,
                                          element.properties->visibleTextRange));
}

/// One aggregate text.
struct Owner {
  ElementIndex element = noElement;
  std::vector<SemanticToken> tokens;
  std::vector<std::uint32_t> words;
  std::optional<TokenSequenceIndex> index;  // absent for texts that another owner represents
  bool isMarkedEditor = false;              // must show its text itself, with its selection
};

/// A text that some descendant prints.
struct PrintedText {
  ElementIndex element = noElement;
  std::size_t firstWord = 0;
  std::size_t wordCount = 0;
  bool isAggregate = false;
};

class AggregateCoverage {
 public:
  AggregateCoverage(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan)
      : context_(context),
        forest_(context.forest()),
        tokenizer_(tokenizer),
        plan_(plan),
        allowedVisits_(forest_.size() * visitsPerElement) {}

  void run() {
    findOwners();
    if (owners_.empty()) return;
    suppressByScope();
    chooseOutermostOwners();
    gatherPrintedTexts();
    // Inner owners first: what they emit is printed text for those around them.
    for (std::size_t i = owners_.size(); i-- > 0;) {
      if (owners_[i].index) decide(owners_[i]);
    }
    for (ElementIndex i = 0; i < forest_.size(); ++i) {
      if (plan_.authoritativeContentIDs.contains(i)) plan_.authoritativeElements.push_back(i);
    }
  }

 private:
  void findOwners() {
    for (const ElementIndex element : forest_.preorder()) {
      if (!context_.isInScope(element) || !isOwner(context_[element])) continue;
      Owner owner;
      owner.element = element;
      owner.tokens = tokenizer_.tokenize(*context_[element].content);
      for (const SemanticToken& token : owner.tokens) owner.words.push_back(token.word);
      owner.isMarkedEditor = isEditor(context_[element].role) && hasRangeToMark(context_[element]);
      owners_.push_back(std::move(owner));
    }
  }

  bool encloses(ElementIndex outer, ElementIndex inner) const {
    return forest_.position(outer) <= forest_.position(inner) && forest_.position(inner) < forest_.subtreeEnd(outer);
  }

  /// A web content's text that holds most of the navigation which the scope left out would bring it back.
  void suppressByScope() {
    std::vector<std::vector<std::uint32_t>> labels;
    for (const ElementIndex element : plan_.scope.omittedNavigationElements) {
      std::vector<std::uint32_t> words;
      tokenizer_.appendWords(primaryText(context_[element]), words);
      if (!words.empty()) labels.push_back(std::move(words));
    }
    if (labels.empty()) return;
    for (const Owner& owner : owners_) {
      if (context_[owner.element].role != webArea || !spendVisits(labels.size())) continue;
      if (!encloses(owner.element, plan_.scope.omittedNavigationElements.front())) continue;
      TokenSequenceIndex index(owner.words);
      const auto held = std::ranges::count_if(
          labels, [&](const auto& words) { return index.find(words, 0, index.size()).has_value(); });
      if (static_cast<std::size_t>(held) * 2 < labels.size()) continue;
      plan_.scopeSuppressedAggregateContentIDs.insert(owner.element);
      plan_.suppressedAggregateContentIDs.insert(owner.element);
    }
  }

  /// Gives an index to every owner whose text no enclosing owner holds.
  void chooseOutermostOwners() {
    std::vector<Owner*> enclosing;
    for (Owner& owner : owners_) {
      while (!enclosing.empty() && !encloses(enclosing.back()->element, owner.element)) enclosing.pop_back();
      if (plan_.scopeSuppressedAggregateContentIDs.contains(owner.element)) continue;
      const auto asked = std::span(enclosing).first(std::min(enclosing.size(), enclosingOwnersAsked));
      const bool isHeld = !owner.isMarkedEditor && std::ranges::any_of(asked, [&](Owner* outer) {
        return outer->index->find(owner.words, 0, outer->index->size()).has_value();
      });
      if (isHeld) {
        plan_.suppressedNestedContentIDs.insert(owner.element);
      } else {
        owner.index.emplace(owner.words);
        enclosing.push_back(&owner);
      }
    }
  }

  void gatherPrintedTexts() {
    std::vector<bool> isUnderOwner(forest_.size());
    firstText_.reserve(forest_.size() + 1);
    for (const ElementIndex element : forest_.preorder()) {
      firstText_.push_back(texts_.size());
      const ElementIndex parent = forest_.parent(element);
      const bool isParentOwner = parent != noElement && isOwner(context_[parent]);
      isUnderOwner[element] = isParentOwner || (parent != noElement && isUnderOwner[parent]);
      if (isUnderOwner[element] && context_.isInScope(element) && !plan_.isSilent(element)) gatherTextsOf(element);
    }
    firstText_.push_back(texts_.size());
  }

  void gatherTextsOf(ElementIndex index) {
    const InterfaceElement& element = context_[index];
    const std::string_view primary = context_.primaryText(index);
    addText(index, plan_.printedName(index, primary));
    if (printsStringValue(element, primary)) addText(index, printableStringValue(element));
    for (const ElementDetail& detail : distinctDetails(element, primary)) {
      if (detail.label == "label" || detail.label == "description") addText(index, detail.text);
    }
    if (hasRowReference(element)) {
      for (const std::string& value : *element.properties->rowValues) addText(index, value);
    }
    if (isOwner(element)) addText(index, *element.content, true);
  }

  void addText(ElementIndex element, std::string_view text, bool isAggregate = false) {
    const std::size_t firstWord = words_.size();
    tokenizer_.appendWords(text, words_);
    const std::size_t count = words_.size() - firstWord;
    if (count > 0) {
      texts_.push_back({.element = element, .firstWord = firstWord, .wordCount = count, .isAggregate = isAggregate});
    }
  }

  std::span<const PrintedText> textsBelow(ElementIndex element) const {
    const std::size_t first = firstText_[forest_.position(element) + 1];
    return std::span(texts_).subspan(first, firstText_[forest_.subtreeEnd(element)] - first);
  }

  bool spendVisits(std::size_t count) {
    if (count > allowedVisits_) return false;
    allowedVisits_ -= count;
    return true;
  }

  void decide(Owner& owner) {
    const bool isExamined = spendVisits(textsBelow(owner.element).size());
    const std::vector<PrintedText> texts = isExamined ? textsPrintedBelow(owner.element) : std::vector<PrintedText>{};
    std::vector<std::span<const std::uint32_t>> sequences;
    sequences.reserve(texts.size());
    for (const PrintedText& text : texts)
      sequences.push_back(std::span(words_).subspan(text.firstWord, text.wordCount));
    const std::vector<bool> isFound = matchInAggregate(*owner.index, sequences);

    const bool isUncovered = owner.index->consumedCount() == 0;
    const bool isCovered = !isUncovered && owner.index->consumedCount() == owner.index->size();
    if (isCovered && !owner.isMarkedEditor) {
      plan_.suppressedAggregateContentIDs.insert(owner.element);
    } else {
      plan_.authoritativeContentIDs.insert(owner.element);
    }
    if (isUncovered || (isCovered && !owner.isMarkedEditor)) return;
    if (isEditor(context_[owner.element].role)) {
      consolidateLeaves(texts, isFound);
    } else {
      plan_.partiallyCoveredAggregateContentIDs.insert(owner.element);
      plan_.authoritativeContentOverrides.emplace(
          owner.element, uncoveredSpans(*context_[owner.element].content, owner.tokens, *owner.index));
    }
  }

  /// Without what inner owners show, or leave to be shown, in another place.
  std::vector<PrintedText> textsPrintedBelow(ElementIndex element) const {
    std::vector<PrintedText> texts;
    for (const PrintedText& text : textsBelow(element)) {
      const bool isEmittedInFull = plan_.authoritativeContentIDs.contains(text.element) &&
                                   !plan_.partiallyCoveredAggregateContentIDs.contains(text.element);
      if (text.isAggregate ? isEmittedInFull : !plan_.coveredTextElementIDs.contains(text.element)) {
        texts.push_back(text);
      }
    }
    return texts;
  }

  void consolidateLeaves(std::span<const PrintedText> texts, const std::vector<bool>& isFound) {
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (isFound[i] && context_.isPlainTextLeaf(texts[i].element)) {
        plan_.coveredTextElementIDs.insert(texts[i].element);
      }
    }
  }

  const RenderContext& context_;
  const ElementForest& forest_;
  SemanticTokenizer& tokenizer_;
  RenderPlan& plan_;
  std::size_t allowedVisits_;
  std::vector<Owner> owners_;           // in pre-order
  std::vector<std::uint32_t> words_;    // of all printed texts
  std::vector<PrintedText> texts_;      // in pre-order
  std::vector<std::size_t> firstText_;  // for each position in pre-order, and the end
};

}  // namespace

void coverAggregateTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan) {
  AggregateCoverage(context, tokenizer, plan).run();
}

}  // namespace quillo
