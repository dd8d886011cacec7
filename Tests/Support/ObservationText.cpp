#include "Tests/Support/ObservationText.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "Tests/Support/SnapshotText.h"

namespace quillo::test {
namespace {

std::string show(const AccessibilityAttributeValue& value) {
  return describe(value);
}

std::string showList(const std::vector<std::string>& texts) {
  std::string list;
  for (const std::string& text : texts) list += (list.empty() ? "" : ", ") + show(text);
  return "[" + list + "]";
}

void addState(std::string& line, const InterfaceElementState& state) {
  forEachSortedField<InterfaceElementState>([&](const auto& field) {
    const auto& member = state.*field.member;
    if (!member) return;
    if constexpr (std::is_same_v<std::decay_t<decltype(*member)>, bool>) {
      line += fmt::format(" {}{}", *member ? "" : "!", field.key);
    } else {
      line += fmt::format(" {}:{}", field.key, nameOf(*member));
    }
  });
}

void addProperties(std::string& line, const InterfaceElementProperties& properties) {
  forEachSortedField<InterfaceElementProperties>([&](const auto& field) {
    const auto& member = properties.*field.member;
    if constexpr (std::is_same_v<std::decay_t<decltype(member)>, std::vector<std::string>>) {
      if (!member.empty()) line += fmt::format(" {}={}", field.key, showList(member));
    } else if constexpr (std::is_same_v<std::decay_t<decltype(*member)>, std::vector<std::string>>) {
      if (member) line += fmt::format(" {}={}", field.key, showList(*member));
    } else {
      if (member) line += fmt::format(" {}={}", field.key, show(*member));
    }
  });
}

}  // namespace

std::string describe(const InterfaceElement& element) {
  std::string line = element.sourceNodeID ? std::to_string(*element.sourceNodeID) : "-";
  line += fmt::format(" {}", nameOf(element.role));
  if (element.label) line += " " + show(*element.label);
  const auto addText = [&](std::string_view key, const auto& text) {
    if (text) line += fmt::format(" {}={}", key, show(*text));
  };
  addText("content", element.content);
  if (element.value) line += " value=" + show(*element.value);
  addText("description", element.description);
  addText("help", element.help);
  addText("placeholder", element.placeholder);
  addState(line, element.state);
  addProperties(line, *element.properties);
  std::string actions;
  for (const InterfaceAction& action : element.actions) {
    actions += (actions.empty() ? "" : " ") + action.name;
    if (action.source == InterfaceActionSource::inferred) actions += "?";
  }
  if (!actions.empty()) line += " {" + actions + "}";
  for (const auto& identifier : element.identifiers) {
    line += fmt::format(" #{}:{}", nameOf(identifier.kind), identifier.value);
  }
  if (element.visibility == InterfaceVisibility::offscreen) line += " offscreen";
  if (element.visibility == InterfaceVisibility::hidden) line += " hidden";
  if (element.isProtected) line += " protected";
  return line;
}

std::string describe(const InterfaceObservation& observation) {
  std::string text;
  for (const InterfaceElement& element : observation.elements) {
    text += std::string(static_cast<std::size_t>(element.depth) * 2, ' ') + describe(element) + "\n";
  }
  return text;
}

std::string findViolation(const InterfaceObservation& observation) {
  const auto& elements = observation.elements;
  if (elements.empty()) return "there is no root";
  const InterfaceElement& root = elements.front();
  if (root.id != observation.rootElementID || root.parentID || root.depth != 0) return "the first element is no root";

  std::unordered_map<std::string_view, const InterfaceElement*> byID;
  std::set<std::int64_t> sources;
  for (const InterfaceElement& element : elements) {
    if (!byID.emplace(element.id, &element).second) return "two elements have the id " + element.id;
    if (element.sourceNodeID && !sources.insert(*element.sourceNodeID).second) return element.id + " repeats a node";
  }

  // The list must be exactly the pre-order that the child ids describe.
  std::vector<const InterfaceElement*> pending = {&root};
  std::size_t position = 0;
  while (!pending.empty()) {
    const InterfaceElement* element = pending.back();
    pending.pop_back();
    if (position == elements.size() || &elements[position] != element) return element->id + " is out of order";
    ++position;
    for (auto id = element->childIDs.rbegin(); id != element->childIDs.rend(); ++id) {
      const auto child = byID.find(*id);
      if (child == byID.end()) return element->id + " lists the unknown " + *id;
      if (child->second->parentID != element->id) return *id + " names another parent than " + element->id;
      if (child->second->depth != element->depth + 1) return *id + " has a wrong depth";
      pending.push_back(child->second);
    }
  }
  if (position != elements.size()) return "an element is not reachable from the root";

  const auto& counts = observation.completeness;
  if (counts.retainedElementCount != std::ssize(elements)) return "retainedElementCount is wrong";
  if (counts.sharedGraphReferenceCount && counts.cyclicGraphReferenceCount && counts.unavailableGraphReferenceCount &&
      counts.ignoredGraphReferenceCount != *counts.sharedGraphReferenceCount + *counts.cyclicGraphReferenceCount +
                                               *counts.unavailableGraphReferenceCount) {
    return "ignoredGraphReferenceCount is not the sum of its categories";
  }
  return {};
}

namespace {

/// The nodes that a walk down from the root meets, in that order, by the obvious recursion.
class SourceWalk {
 public:
  explicit SourceWalk(const AccessibilitySnapshot& snapshot) {
    for (const AccessibilityNode& node : snapshot.nodes) nodes_.try_emplace(node.id, &node);
    visit(snapshot.rootID, nullptr);
  }

  struct Visit {
    const AccessibilityNode* node;
    const AccessibilityNode* parent;
    std::size_t position;
  };

  const Visit* find(std::int64_t id) const {
    const auto found = visits_.find(id);
    return found == visits_.end() ? nullptr : &found->second;
  }
  std::int64_t nodeCount() const { return std::ssize(nodes_); }
  /// What a walk that follows each node once leaves out.
  std::int64_t ignoredCount() const { return referenceCount_ - std::ssize(visits_); }

 private:
  void visit(std::int64_t id, const AccessibilityNode* parent) {
    ++referenceCount_;
    const auto found = nodes_.find(id);
    if (found == nodes_.end() || !visits_.emplace(id, Visit{found->second, parent, visits_.size()}).second) return;
    for (const std::int64_t child : found->second->childIDs) visit(child, found->second);
  }

  std::map<std::int64_t, const AccessibilityNode*> nodes_;
  std::map<std::int64_t, Visit> visits_;
  std::int64_t referenceCount_ = 0;
};

bool keepsText(const InterfaceElement& element) {
  const InterfaceElementProperties& properties = *element.properties;
  return element.value || element.content || properties.valueDescription || properties.selectedText ||
         properties.selectedTextRange || properties.visibleTextRange;
}

}  // namespace

std::string findViolation(const InterfaceObservation& observation, const AccessibilitySnapshot& snapshot) {
  if (std::string violation = findViolation(observation); !violation.empty()) return violation;
  const SourceWalk walk(snapshot);
  std::set<std::int64_t> retained;
  std::size_t nextPosition = 0;
  for (const InterfaceElement& element : observation.elements) {
    if (!element.sourceNodeID) continue;
    const SourceWalk::Visit* visit = walk.find(*element.sourceNodeID);
    if (visit == nullptr) return element.id + " is no node that the root leads to";
    if (visit->position < nextPosition) return element.id + " stands before its turn";
    nextPosition = visit->position + 1;
    const AccessibilityNode* ancestor = visit->parent;
    while (ancestor != nullptr && !retained.contains(ancestor->id)) ancestor = walk.find(ancestor->id)->parent;
    const std::string parentID = ancestor == nullptr ? "application-root" : "element-" + std::to_string(ancestor->id);
    if (element.parentID.value_or(parentID) != parentID) return element.id + " hangs not where it was hoisted to";
    retained.insert(*element.sourceNodeID);
    if (visit->node->isProtected && (!element.isProtected || keepsText(element))) return element.id + " tells a secret";
    const bool isFocused = element.state.focused.value_or(false);
    if (snapshot.focusedNodeID && isFocused != (element.sourceNodeID == snapshot.focusedNodeID)) {
      return element.id + " has a stale focus";
    }
  }
  const auto& counts = observation.completeness;
  if (counts.ignoredGraphReferenceCount != walk.ignoredCount()) return "ignoredGraphReferenceCount is wrong";
  const std::int64_t mostPruned = walk.nodeCount() - std::ssize(retained);
  if (counts.prunedNodeCount < 0 || counts.prunedNodeCount > mostPruned) return "prunedNodeCount is wrong";
  return {};
}

}  // namespace quillo::test
