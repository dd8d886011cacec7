#include "QuilloCore/Semantics/GatheredNames.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementLine.h"
#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// Looks at elements for each element of the observation, so that deep nests of lists stay linear.
constexpr std::size_t visitsPerElement = 16;

/// Walks along a name as far as the texts inside follow one another to its end.
class NameEnd {
 public:
  NameEnd(std::string_view name, SemanticTokenizer& tokenizer)
      : name_(name), tokenizer_(tokenizer), tokens_(tokenizer.tokenize(name)) {}

  bool isComplete() const { return isStarted_ && next_ == tokens_.size(); }

  /// Whether the text is the next one; the first may stand anywhere.
  bool takes(std::string_view text) {
    const std::vector<SemanticToken> words = tokenizer_.tokenize(text);
    if (words.empty() || isComplete()) return false;
    const auto isSameWord = [](const SemanticToken& a, const SemanticToken& b) { return a.word == b.word; };
    const auto rest = isStarted_ ? tokens_.begin() + static_cast<std::ptrdiff_t>(next_) : tokens_.begin();
    const auto found = std::search(rest, tokens_.end(), words.begin(), words.end(), isSameWord);
    if (found == tokens_.end() || (isStarted_ && found != rest)) return false;
    if (!isStarted_) {
      begin_ = static_cast<std::size_t>(found - tokens_.begin());
      ornament_ = text.substr(0, words.front().begin);
    }
    isStarted_ = true;
    next_ = static_cast<std::size_t>(found - tokens_.begin()) + words.size();
    return true;
  }

  /// What stands before the texts inside, without the bullet of the first of them; empty without any word.
  std::string_view head() const {
    if (begin_ == 0) return {};
    std::string_view head = name_.substr(0, tokens_[begin_].begin);
    if (head.ends_with(ornament_)) head.remove_suffix(ornament_.size());
    return trimmingWhiteSpace(head);
  }

 private:
  std::string_view name_;
  SemanticTokenizer& tokenizer_;
  std::vector<SemanticToken> tokens_;
  std::size_t begin_ = 0;
  std::size_t next_ = 0;
  bool isStarted_ = false;
  std::string_view ornament_;
};

class GatheredNames {
 public:
  GatheredNames(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan)
      : context_(context),
        tokenizer_(tokenizer),
        plan_(plan),
        allowedVisits_(context.forest().size() * visitsPerElement) {}

  void run() {
    for (const ElementIndex element : context_.forest().preorder()) {
      const InterfaceSemanticRole role = context_[element].role;
      if ((role == listItem || role == text) && context_.isInScope(element) && !plan_.isSilent(element))
        shorten(element);
    }
  }

 private:
  void shorten(ElementIndex index) {
    const std::string_view name = context_.primaryText(index);
    if (name.empty() || !hasLinesInside(index)) return;
    NameEnd end(name, tokenizer_);
    const ElementForest& forest = context_.forest();
    const std::size_t stop = forest.subtreeEnd(index);
    for (std::size_t i = forest.position(index) + 1; i < stop && !end.isComplete() && spendVisit();) {
      const ElementIndex inside = forest.preorder()[i];
      i = hasOwnLine(inside) && takesTextsOf(inside, end) ? forest.subtreeEnd(inside) : i + 1;
    }
    if (!end.isComplete()) return;
    const std::string_view head = end.head();
    plan_.printedNames.emplace(index, head);
    if (head.empty() && context_[index].role == text && isNothingButName(index)) plan_.silentElementIDs.insert(index);
  }

  bool spendVisit() {
    if (allowedVisits_ == 0) return false;
    --allowedVisits_;
    return true;
  }

  bool hasOwnLine(ElementIndex index) const {
    return context_.isInScope(index) && !plan_.isSilent(index) && !context_.isPlainTextLeaf(index);
  }

  bool hasLinesInside(ElementIndex index) {
    const auto inside = context_.forest().descendants(index);
    return std::ranges::any_of(inside, [&](ElementIndex i) { return spendVisit() && hasOwnLine(i); });
  }

  bool takesTextsOf(ElementIndex index, NameEnd& end) {
    const InterfaceElement& element = context_[index];
    const std::string_view primary = context_.primaryText(index);
    const bool isNameTaken = end.takes(primary);
    const bool isValueTaken = printsStringValue(element, primary) && end.takes(printableStringValue(element));
    const bool isContentTaken = element.content && !element.isProtected && end.takes(*element.content);
    return isNameTaken || isValueTaken || isContentTaken;
  }

  bool isNothingButName(ElementIndex index) const {
    const InterfaceElement& element = context_[index];
    const std::string_view primary = context_.primaryText(index);
    return !element.isProtected && !element.content && !saysMoreThanItsTexts(element) &&
           !printsStringValue(element, primary) && distinctDetails(element, primary).empty();
  }

  const RenderContext& context_;
  SemanticTokenizer& tokenizer_;
  RenderPlan& plan_;
  std::size_t allowedVisits_;
};

}  // namespace

void shortenGatheredNames(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan) {
  GatheredNames(context, tokenizer, plan).run();
}

}  // namespace quillo
