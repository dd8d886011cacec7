#include "QuilloCore/Semantics/GatheredNames.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// Looks at elements for each element of the observation, so that deep nests of lists stay linear.
constexpr std::size_t visitsPerElement = 16;

/// Who gathers its name from what stands inside, and how far one may trust that.
enum class Gathering : std::uint8_t {
  none,
  lines,  ///< an item or label: its plain texts are its name, the elements with lines of their own are not
  all,    ///< a container that a toolkit named by all of its contents
  most,   ///< a control around a whole header, with words of its own before and behind
};

Gathering gatheringOf(InterfaceSemanticRole role) {
  switch (role) {
    case listItem:
    case text: return Gathering::lines;
    case section:
    case group:
    case unknown: return Gathering::all;
    case button:
    case disclosure:
    case checkbox:
    case switchControl: return Gathering::most;
    default: return Gathering::none;
  }
}

/// Walks along a name as far as the texts inside follow one another.
class NamePart {
 public:
  NamePart(std::string_view name, SemanticTokenizer& tokenizer)
      : name_(name), tokenizer_(tokenizer), tokens_(tokenizer.tokenize(name)) {}

  bool reachesEnd() const { return isStarted_ && next_ == tokens_.size(); }
  bool isMostOfName() const { return 2 * (next_ - begin_) >= tokens_.size(); }

  /// Whether the text is the next one; the first may stand anywhere.
  bool takes(std::string_view text) {
    const std::vector<SemanticToken> words = tokenizer_.tokenize(text);
    if (words.empty() || reachesEnd()) return false;
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

  /// What stands before and behind the texts inside, without the bullet of the first of them; empty without any word.
  std::string remainder() const {
    std::string result;
    if (begin_ > 0) {
      std::string_view head = name_.substr(0, tokens_[begin_].begin);
      if (head.ends_with(ornament_)) head.remove_suffix(ornament_.size());
      result = trimmingWhiteSpace(head);
    }
    if (next_ == tokens_.size()) return result;
    if (!result.empty()) result += ' ';
    return result.append(trimmingWhiteSpace(name_.substr(tokens_[next_].begin)));
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
      const Gathering gathering = gatheringOf(context_[element].role);
      if (gathering != Gathering::none && context_.isInScope(element) && !plan_.isSilent(element)) {
        shorten(element, gathering);
      }
    }
  }

 private:
  void shorten(ElementIndex index, Gathering gathering) {
    const std::string_view name = context_.primaryText(index);
    if (name.empty() || !hasLinesInside(index)) return;
    NamePart part(name, tokenizer_);
    const ElementForest& forest = context_.forest();
    const std::size_t stop = forest.subtreeEnd(index);
    std::size_t lines = 0;
    for (std::size_t i = forest.position(index) + 1; i < stop && !part.reachesEnd() && spendVisit();) {
      const ElementIndex inside = forest.preorder()[i];
      const bool isCaption = gathering != Gathering::lines && context_.isPlainText(inside);
      const bool isLine = hasOwnLine(inside) && !isCaption;
      const bool isAsked = isLine || isCaption;
      const bool isTaken = isAsked && takesTextsOf(inside, part);
      if (isTaken && isLine) ++lines;
      // Such a name begins with the first text inside or is the container's own.
      if (gathering == Gathering::all && isAsked && !isTaken && !context_.primaryText(inside).empty()) return;
      i = isTaken ? forest.subtreeEnd(inside) : i + 1;
    }
    const bool isMost = gathering == Gathering::most && lines > 1 && part.isMostOfName();
    const bool isEnd = part.reachesEnd() && (gathering == Gathering::lines || part.remainder().empty());
    if (lines == 0 || !(isEnd || isMost)) return;
    const std::string& printed = plan_.printedNames.emplace(index, part.remainder()).first->second;
    const bool isOnlyName = context_[index].role == text && saysNothingButName(context_, plan_, index);
    if (printed.empty() && isOnlyName) plan_.silentElementIDs.insert(index);
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

  bool takesTextsOf(ElementIndex index, NamePart& part) {
    const InterfaceElement& element = context_[index];
    const std::string_view primary = context_.primaryText(index);
    const bool isNameTaken = part.takes(primary);
    const bool isValueTaken = printsStringValue(element, primary) && part.takes(printableStringValue(element));
    const bool isContentTaken = element.content && !element.isProtected && part.takes(*element.content);
    return isNameTaken || isValueTaken || isContentTaken;
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
