#include "QuilloCore/Semantics/NamingTexts.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"

namespace quillo {
namespace {

using enum InterfaceSemanticRole;

/// Roles that may be labelled by one text inside them.
bool mayHoldItsCaption(InterfaceSemanticRole role) {
  switch (role) {
    case section:
    case group:
    case unknown:
    case tabGroup:
    case list:
    case table:
    case image: return true;
    default: return false;
  }
}

class NamingTexts {
 public:
  NamingTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan)
      : context_(context), tokenizer_(tokenizer), plan_(plan) {}

  void run() {
    std::vector<ElementIndex> named(context_.forest().size(), noElement);  // the nearest named element around each
    for (const ElementIndex element : context_.forest().preorder()) {
      const ElementIndex parent = context_.forest().parent(element);
      if (parent == noElement) continue;
      named[element] = printedName(parent).empty() ? named[parent] : parent;
      if (named[element] == noElement || context_.primaryText(element).empty() || plan_.isSilent(element)) continue;
      if (context_.isPlainTextLeaf(element)) {
        if (names(element, named[element])) plan_.silentElementIDs.insert(element);
      } else if (!plan_.printedNames.contains(element) && isWholeName(element, named[element])) {
        // A tab group has the name of the tab in front.
        const bool isOwnersName = context_[element].role == tab && context_[named[element]].role == tabGroup;
        plan_.printedNames.emplace(isOwnersName ? named[element] : element, "");
      }
    }
  }

 private:
  std::string_view printedName(ElementIndex element) const {
    return plan_.printedName(element, context_.primaryText(element));
  }

  struct Name {
    TokenSequenceIndex words;
    std::size_t cursor = 0;
  };

  bool names(ElementIndex text, ElementIndex owner) {
    if (isWholeName(text, owner)) return true;
    return isNamedByItsTexts(context_[owner].role) && !claimed_.contains(owner) && isPartOfName(text, owner);
  }

  /// Once for each owner.
  bool isWholeName(ElementIndex inner, ElementIndex owner) {
    const InterfaceSemanticRole role = context_[owner].role;
    return (mayHoldItsCaption(role) || isNamedByItsTexts(role)) &&
           agreeButForWhiteSpace(context_.primaryText(inner), printedName(owner)) && claimed_.insert(owner);
  }

  /// Takes the text's words from the name, in order, so that a second text needs the name to hold them twice.
  bool isPartOfName(ElementIndex text, ElementIndex owner) {
    words_.clear();
    tokenizer_.appendWords(context_.primaryText(text), words_);
    auto found = names_.find(owner);
    if (found == names_.end()) {
      std::vector<std::uint32_t> nameWords;
      tokenizer_.appendWords(printedName(owner), nameWords);
      found = names_.emplace(owner, Name{.words = TokenSequenceIndex(std::move(nameWords))}).first;
    }
    Name& name = found->second;
    const auto place = name.words.find(words_, name.cursor, name.words.size());
    if (place) name.cursor = *place + words_.size();
    return place.has_value();
  }

  const RenderContext& context_;
  SemanticTokenizer& tokenizer_;
  RenderPlan& plan_;
  ElementIndexSet claimed_ = ElementIndexSet(context_.forest().size());
  std::unordered_map<ElementIndex, Name> names_;
  std::vector<std::uint32_t> words_;
};

}  // namespace

bool isNamedByItsTexts(InterfaceSemanticRole role) {
  switch (role) {
    case button:
    case disclosure:
    case link:
    case heading:
    case text:
    case tab:
    case menuItem:
    case checkbox:
    case radioButton:
    case switchControl:
    case popUpButton:
    case listItem:
    case row:
    case treeItem:
    case cell: return true;
    default: return false;
  }
}

void findNamingTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan) {
  NamingTexts(context, tokenizer, plan).run();
}

}  // namespace quillo
