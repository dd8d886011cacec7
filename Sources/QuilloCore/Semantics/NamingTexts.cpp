#include "QuilloCore/Semantics/NamingTexts.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Semantics/InterfaceElementTexts.h"
#include "QuilloCore/Semantics/PrintedDetails.h"
#include "QuilloCore/Semantics/TokenSequenceIndex.h"
#include "QuilloCore/Support/WhiteSpace.h"

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

/// Bytes of a name in which texts without words are looked for.
constexpr std::size_t longestNameWithMarks = 2048;

class NamingTexts {
 public:
  NamingTexts(const RenderContext& context, SemanticTokenizer& tokenizer, RenderPlan& plan)
      : context_(context), tokenizer_(tokenizer), plan_(plan) {}

  void run() {
    std::vector<ElementIndex> named(context_.forest().size(), noElement);  // the nearest named element around each
    for (const ElementIndex element : context_.forest().preorder()) {
      const ElementIndex parent = context_.forest().parent(element);
      if (parent == noElement) continue;
      named[element] = ownName(parent).empty() ? named[parent] : parent;
      if (named[element] == noElement || context_.primaryText(element).empty() || plan_.isSilent(element)) continue;
      tell(element, named[element]);
    }
  }

 private:
  /// Lets the owner's name tell the element's, where it does.
  void tell(ElementIndex element, ElementIndex owner) {
    if (context_.isPlainText(element)) {
      if (!plan_.printedNames.contains(element) && names(element, owner)) silence(element);
      return;
    }
    if (plan_.printedNames.contains(element)) return;
    if (isWholeName(element, owner)) {
      // A tab group has the name of the tab in front.
      if (context_[element].role == tab && context_[owner].role == tabGroup) {
        plan_.printedNames.emplace(owner, "");
      } else {
        isToldAround_.insert(element);
        plan_.printedNames.emplace(element, "");
      }
    } else if (context_[owner].role == heading && context_[element].role == link &&
               saysNothingButName(context_, plan_, element) && names(element, owner)) {
      silence(element);
    }
  }

  void silence(ElementIndex element) {
    isToldAround_.insert(element);
    plan_.silentElementIDs.insert(element);
  }

  /// The name that the texts inside may be part of: also one that stands on the line of an element around.
  std::string_view ownName(ElementIndex element) const {
    const std::string_view primary = context_.primaryText(element);
    return isToldAround_.contains(element) ? primary : plan_.printedName(element, primary);
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
           agreeButForWhiteSpace(context_.primaryText(inner), ownName(owner)) && claimed_.insert(owner);
  }

  /// Takes the text's words from the name, in order, so that a second text needs the name to hold them twice.
  bool isPartOfName(ElementIndex text, ElementIndex owner) {
    words_.clear();
    tokenizer_.appendWords(context_.primaryText(text), words_);
    if (words_.empty()) {
      const std::string_view name = ownName(owner);
      return name.size() <= longestNameWithMarks && name.contains(trimmingWhiteSpace(context_.primaryText(text)));
    }
    auto found = names_.find(owner);
    if (found == names_.end()) {
      std::vector<std::uint32_t> nameWords;
      tokenizer_.appendWords(ownName(owner), nameWords);
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
  ElementIndexSet isToldAround_ = ElementIndexSet(context_.forest().size());
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
