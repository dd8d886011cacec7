#include "QuilloCore/Semantics/InterfaceDocumentTextConsolidation.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceRetention.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;

/// An owner's text with its white space collapsed, once for all the questions about it.
class CoveringText {
 public:
  explicit CoveringText(std::string_view text) : text_(collapsingWhiteSpace(text)) {}

  bool covers(std::string_view other) {
    const std::string sought = collapsingWhiteSpace(other);
    if (sought.empty()) return true;
    // Nested owners mostly come in the order of their texts, so the last hit is the best place to go on.
    std::size_t found = text_.find(sought, cursor_);
    if (found == std::string::npos && cursor_ > 0) found = text_.find(sought);
    if (found == std::string::npos) return false;
    cursor_ = found;
    return true;
  }

 private:
  std::string text_;
  std::size_t cursor_ = 0;
};

bool ownsText(const InterfaceElement& element) {
  const bool isOwner =
      element.role == Role::document || element.role == Role::webArea || element.role == Role::textArea;
  return isOwner && element.content;
}

bool isEmptyContainer(const InterfaceDraftElement& draft) {
  const Role role = draft.element.role;
  const bool isContainer = role == Role::group || role == Role::section || role == Role::unknown;
  return isContainer && draft.children.empty() && !hasIndependentRowState(draft.element) && !hasText(draft.element);
}

struct Frame {
  InterfaceDraftIndex index = 0;
  std::optional<std::size_t> inherited = {};  // the covering text in force for the element itself
  std::optional<std::size_t> covering = {};   // and for its children
  std::size_t nextChild = 0;
  std::size_t keptChildren = 0;
};

}  // namespace

void consolidateAuthoritativeDocumentText(InterfaceDraftTree& tree) {
  std::vector<CoveringText> coveringTexts;
  const auto enter = [&](InterfaceDraftIndex index, std::optional<std::size_t> inherited) {
    InterfaceElement& element = tree[index].element;
    Frame frame{.index = index, .inherited = inherited, .covering = inherited};
    if (ownsText(element)) {
      if (inherited && coveringTexts[*inherited].covers(*element.content)) {
        element.content.reset();
      } else {
        coveringTexts.emplace_back(*element.content);
        frame.covering = coveringTexts.size() - 1;
      }
    }
    return frame;
  };

  std::vector<Frame> path = {enter(tree.root, std::nullopt)};
  while (true) {
    Frame& frame = path.back();
    auto& children = tree[frame.index].children;
    if (frame.nextChild < children.size()) {
      const InterfaceDraftIndex child = children[frame.nextChild++];
      path.push_back(enter(child, frame.covering));
      continue;
    }
    children.resize(frame.keptChildren);
    const InterfaceDraftIndex done = frame.index;
    const bool isRemoved = frame.inherited && isEmptyContainer(tree[done]);
    path.pop_back();
    if (path.empty()) return;
    Frame& parent = path.back();
    if (!isRemoved) tree[parent.index].children[parent.keptChildren++] = done;
  }
}

}  // namespace quillo
