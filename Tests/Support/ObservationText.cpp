#include "Tests/Support/ObservationText.h"

#include <fmt/format.h>

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
  const auto addText = [&](std::string_view key, const std::optional<std::string>& text) {
    if (text) line += fmt::format(" {}={}", key, show(*text));
  };
  addText("content", element.content);
  if (element.value) line += " value=" + show(*element.value);
  addText("description", element.description);
  addText("help", element.help);
  addText("placeholder", element.placeholder);
  addState(line, element.state);
  addProperties(line, element.properties);
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

}  // namespace quillo::test
