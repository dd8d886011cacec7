#include "QuilloCore/Semantics/InterfaceCellText.h"

#include <utility>
#include <vector>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

/// Of two accounts of the same thing the one that holds the other; else both.
std::string joined(std::string first, std::string second) {
  if (second.empty() || first.find(second) != std::string::npos) return first;
  if (first.empty() || second.find(first) != std::string::npos) return second;
  first += ' ';
  first += second;
  return first;
}

std::string ownText(const InterfaceElement& element) {
  std::string text;
  if (element.label) text = collapsingWhiteSpace(*element.label);
  if (element.value) {
    if (const auto* value = std::get_if<std::string>(&*element.value)) {
      text = joined(std::move(text), collapsingWhiteSpace(*value));
    }
  }
  if (text.empty() && element.description) text = collapsingWhiteSpace(*element.description);
  return text;
}

bool contributes(const InterfaceElement& element) {
  return !element.isProtected && element.visibility != InterfaceVisibility::hidden;
}

struct Frame {
  InterfaceDraftIndex index;
  std::size_t nextChild = 0;
  std::string childText = {};
};

}  // namespace

std::string cellText(const InterfaceDraftTree& tree, InterfaceDraftIndex cell) {
  if (!contributes(tree[cell].element)) return {};
  std::vector<Frame> path = {{.index = cell}};
  while (true) {
    Frame& frame = path.back();
    const InterfaceDraftElement& draft = tree[frame.index];
    if (frame.nextChild < draft.children.size()) {
      const InterfaceDraftIndex child = draft.children[frame.nextChild++];
      if (contributes(tree[child].element)) path.push_back({.index = child});
      continue;
    }
    std::string text = joined(ownText(draft.element), std::move(frame.childText));
    path.pop_back();
    if (path.empty()) return text;
    std::string& siblings = path.back().childText;
    if (!siblings.empty() && !text.empty()) siblings += ' ';
    siblings += text;
  }
}

}  // namespace quillo
