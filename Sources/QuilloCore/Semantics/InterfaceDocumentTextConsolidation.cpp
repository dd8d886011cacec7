#include "QuilloCore/Semantics/InterfaceDocumentTextConsolidation.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceRetention.h"
#include "QuilloCore/Semantics/SubstringIndex.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

using Role = InterfaceSemanticRole;

bool ownsText(const InterfaceElement& element) {
  const bool isOwner =
      element.role == Role::document || element.role == Role::webArea || element.role == Role::textArea;
  return isOwner && element.content;
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
  std::vector<SubstringIndex> coveringTexts;  // with collapsed white space
  const auto enter = [&](InterfaceDraftIndex index, std::optional<std::size_t> inherited) {
    InterfaceElement& element = tree.elements[index];
    Frame frame{.index = index, .inherited = inherited, .covering = inherited};
    if (ownsText(element)) {
      std::string text = collapsingWhiteSpace(*element.content);
      if (inherited && coveringTexts[*inherited].contains(text)) {
        element.content.reset();
      } else {
        coveringTexts.emplace_back(std::move(text));
        frame.covering = coveringTexts.size() - 1;
      }
    }
    return frame;
  };

  std::vector<Frame> path = {enter(tree.root, std::nullopt)};
  while (true) {
    Frame& frame = path.back();
    auto& children = tree.children[frame.index];
    if (frame.nextChild < children.size()) {
      const InterfaceDraftIndex child = children[frame.nextChild++];
      path.push_back(enter(child, frame.covering));
      continue;
    }
    children.resize(frame.keptChildren);
    const InterfaceDraftIndex done = frame.index;
    const bool isRemoved = frame.inherited && tree.children[done].empty() && isBareContainer(tree.elements[done]);
    path.pop_back();
    if (path.empty()) return;
    Frame& parent = path.back();
    if (!isRemoved) tree.children[parent.index][parent.keptChildren++] = done;
  }
}

}  // namespace quillo
