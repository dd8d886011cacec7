#include "Tests/Support/ObservationBuilder.h"

#include <chrono>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Tests/Support/TreeNotation.h"

namespace quillo::test {
namespace {

template <class Number>
std::vector<Number> numbers(const std::string& text) {
  std::istringstream stream(text);
  std::vector<Number> result;
  for (Number number; stream >> number;) result.push_back(number);
  return result;
}

ArtifactTextRange range(const std::string& text) {
  const auto parts = numbers<std::int64_t>(text);
  return {.location = parts.at(0), .length = parts.at(1)};
}

ArtifactRect rect(const std::string& text) {
  const auto parts = numbers<double>(text);
  return {.x = parts.at(0), .y = parts.at(1), .width = parts.at(2), .height = parts.at(3)};
}

InterfaceSemanticRole roleNamed(std::string_view name) {
  const auto& names = EnumerationNames<InterfaceSemanticRole>::names;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<InterfaceSemanticRole>(i);
  }
  throw std::invalid_argument("no role is called " + std::string(name));
}

using FlagSetter = std::function<void(InterfaceElement&)>;
using FieldSetter = std::function<void(InterfaceElement&, const std::string&)>;
using State = InterfaceElementState;

FlagSetter state(std::optional<bool> State::* member, bool value) {
  return [=](InterfaceElement& element) { element.state.*member = value; };
}
FlagSetter checked(InterfaceCheckState value) {
  return [=](InterfaceElement& element) { element.state.checked = value; };
}
FlagSetter visibility(InterfaceVisibility value) {
  return [=](InterfaceElement& element) { element.visibility = value; };
}
template <class Text>
FieldSetter text(Text InterfaceElement::* member) {
  return [=](InterfaceElement& element, const std::string& value) { element.*member = value; };
}
template <class Member>
FieldSetter property(Member InterfaceElementProperties::* member, auto convert) {
  return
      [=](InterfaceElement& element, const std::string& value) { element.properties.edit().*member = convert(value); };
}

const std::map<std::string, FlagSetter, std::less<>> flagSetters = {
    {"disabled", state(&State::enabled, false)},
    {"focused", state(&State::focused, true)},
    {"selected", state(&State::selected, true)},
    {"expanded", state(&State::expanded, true)},
    {"collapsed", state(&State::expanded, false)},
    {"checked", checked(InterfaceCheckState::on)},
    {"unchecked", checked(InterfaceCheckState::off)},
    {"mixed", checked(InterfaceCheckState::mixed)},
    {"required", state(&State::required, true)},
    {"modal", state(&State::modal, true)},
    {"visited", state(&State::visited, true)},
    {"busy", state(&State::busy, true)},
    {"invalid", state(&State::invalid, true)},
    {"edited", state(&State::edited, true)},
    {"visible", visibility(InterfaceVisibility::visible)},
    {"offscreen", visibility(InterfaceVisibility::offscreen)},
    {"hidden", visibility(InterfaceVisibility::hidden)},
    {"protected", [](InterfaceElement& element) { element.isProtected = true; }},
};

std::string asText(const std::string& value) {
  return value;
}
std::int64_t asInteger(const std::string& value) {
  return std::stoll(value);
}
std::vector<std::string> asList(const std::string& value) {
  return splitParts(value, '|');
}

FieldSetter actions(InterfaceActionSource source) {
  return [=](InterfaceElement& element, const std::string& names) {
    for (std::string& name : splitParts(names, ',')) element.actions.push_back({std::move(name), source});
  };
}

using Properties = InterfaceElementProperties;

const std::map<std::string, FieldSetter, std::less<>> fieldSetters = {
    {"id", [](InterfaceElement& element, const std::string& value) { element.id = value; }},
    {"raw", [](InterfaceElement& element, const std::string& value) { element.accessibilityRole = value; }},
    {"value", [](InterfaceElement& element, const std::string& value) { element.value = value; }},
    {"integer", [](InterfaceElement& element, const std::string& value) { element.value = asInteger(value); }},
    {"number", [](InterfaceElement& element, const std::string& value) { element.value = std::stod(value); }},
    {"boolean", [](InterfaceElement& element, const std::string& value) { element.value = value == "true"; }},
    {"redacted", [](InterfaceElement& element, const std::string&) { element.value = RedactedValue{}; }},
    {"label", text(&InterfaceElement::label)},
    {"content", text(&InterfaceElement::content)},
    {"description", text(&InterfaceElement::description)},
    {"help", text(&InterfaceElement::help)},
    {"placeholder", text(&InterfaceElement::placeholder)},
    {"roleDescription", property(&Properties::roleDescription, asText)},
    {"valueDescription", property(&Properties::valueDescription, asText)},
    {"level", property(&Properties::headingLevel, asInteger)},
    {"disclosure", property(&Properties::disclosureLevel, asInteger)},
    {"index", property(&Properties::index, asInteger)},
    {"cells", property(&Properties::rowValues, asList)},
    {"headers", property(&Properties::columnHeaders, asList)},
    {"selection", property(&Properties::selectedTextRange, range)},
    {"shown", property(&Properties::visibleTextRange, range)},
    {"bounds", [](InterfaceElement& element, const std::string& value) { element.bounds = rect(value); }},
    {"actions", actions(InterfaceActionSource::accessibility)},
    {"inferred", actions(InterfaceActionSource::inferred)},
    {"identifiers",
     [](InterfaceElement& element, const std::string& values) {
       for (std::string& value : splitParts(values, ',')) {
         element.identifiers.push_back({InterfaceIdentifierKind::dom, std::move(value)});
       }
     }},
    {"children",
     [](InterfaceElement& element, const std::string& ids) {
       for (std::string& id : splitParts(ids, ',')) element.childIDs.push_back(std::move(id));
     }},
};

class Builder {
 public:
  std::size_t add(const NotationNode& node, const InterfaceElement* parent) {
    const std::size_t index = elements.size();
    InterfaceElement element;
    element.id = "element-" + std::to_string(index);
    element.sourceNodeID = static_cast<std::int64_t>(index);
    element.role = roleNamed(node.kind);
    element.accessibilityRole = "AX" + node.kind;
    if (node.title && element.role == InterfaceSemanticRole::text) element.value = *node.title;
    if (node.title && element.role != InterfaceSemanticRole::text) element.label = *node.title;
    for (const std::string& flag : node.flags) flagSetters.at(flag)(element);
    for (const auto& [key, value] : node.fields) fieldSetters.at(key)(element, value);
    if (parent != nullptr) {
      element.parentID = parent->id;
      element.depth = parent->depth + 1;
    }
    std::vector<std::string> furtherChildren = std::move(element.childIDs);
    element.childIDs.clear();
    elements.push_back(std::move(element));
    for (const NotationNode& child : node.children) {
      const InterfaceElement self = elements[index];
      const std::size_t childIndex = add(child, &self);
      elements[index].childIDs.push_back(elements[childIndex].id);
    }
    for (std::string& id : furtherChildren) elements[index].childIDs.push_back(std::move(id));
    return index;
  }

  std::vector<InterfaceElement> elements;
};

}  // namespace

InterfaceObservation observation(std::string_view notation) {
  Builder builder;
  for (const NotationNode& root : parseTrees(notation)) builder.add(root, nullptr);
  InterfaceObservation observation;
  observation.observedAt = Date(std::chrono::milliseconds(1'794'692'147'123));  // 2026-11-14T21:35:47.123Z
  observation.targetProcessIdentifier = 4711;
  observation.elements = std::move(builder.elements);
  if (!observation.elements.empty()) observation.rootElementID = observation.elements.front().id;
  observation.completeness.sourceNodeCount = static_cast<std::int64_t>(observation.elements.size());
  observation.completeness.retainedElementCount = static_cast<std::int64_t>(observation.elements.size());
  observation.completeness.sharedGraphReferenceCount = 0;
  observation.completeness.cyclicGraphReferenceCount = 0;
  observation.completeness.unavailableGraphReferenceCount = 0;
  return observation;
}

}  // namespace quillo::test
