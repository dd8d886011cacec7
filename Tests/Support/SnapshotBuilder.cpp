#include "Tests/Support/SnapshotBuilder.h"

#include <charconv>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include "Tests/Support/TreeNotation.h"

namespace quillo::test {
namespace {

template <class Number>
std::optional<Number> parseWhole(std::string_view text) {
  Number number{};
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isWhole = result.ec == std::errc{} && result.ptr == text.data() + text.size();
  return isWhole ? std::optional(number) : std::nullopt;
}

AccessibilityAttributeValue parseValue(const std::string& text) {
  if (text == "true" || text == "false") return text == "true";
  if (text == "<redacted>") return RedactedValue{};
  if (const auto integer = parseWhole<std::int64_t>(text)) return *integer;
  if (const auto number = parseWhole<double>(text)) return *number;
  if (const std::size_t dots = text.find(".."); dots != std::string::npos) {
    const auto begin = parseWhole<std::int64_t>(std::string_view(text).substr(0, dots));
    const auto end = parseWhole<std::int64_t>(std::string_view(text).substr(dots + 2));
    if (begin && end) return ArtifactTextRange{.location = *begin, .length = *end - *begin};
  }
  if (text.find('|') != std::string::npos) return splitParts(text, '|');
  return text;
}

void applyFlag(AccessibilityNode& node, const std::string& flag) {
  static const std::map<std::string, AccessibilityAttribute> attributes = {
      {"focused", {"AXFocused", true}},     {"selected", {"AXSelected", true}}, {"expanded", {"AXExpanded", true}},
      {"collapsed", {"AXExpanded", false}}, {"disabled", {"AXEnabled", false}},
  };
  if (flag == "protected") {
    node.isProtected = true;
  } else {
    node.attributes.push_back(attributes.at(flag));
  }
}

void applyField(AccessibilityNode& node, const std::string& key, const std::string& value) {
  static const std::map<std::string, std::string> texts = {
      {"help", "AXHelp"},     {"description", "AXDescription"},      {"label", "AXLabel"},
      {"id", "AXIdentifier"}, {"placeholder", "AXPlaceholderValue"}, {"text", "AXFullText"}};
  if (const auto known = texts.find(key); known != texts.end()) {
    node.attributes.push_back({known->second, value});
  } else if (key == "value") {
    node.attributes.push_back({"AXValue", parseValue(value)});
  } else if (key == "subrole") {
    node.subrole = value;
  } else if (key == "actions") {
    node.attributes.push_back({"AXActions", splitParts(value, ',')});
  } else if (key == "frame") {
    node.frame = parseFrame(value);
  } else if (key == "refs") {
    for (const std::string& id : splitParts(value, ',')) node.childIDs.push_back(std::stoll(id));
  } else if (key.starts_with("AX")) {
    node.attributes.push_back({key, parseValue(value)});
  } else {
    throw std::invalid_argument("unknown key " + key);
  }
}

std::int64_t addTree(AccessibilitySnapshot& snapshot, const NotationNode& tree, std::optional<std::int64_t> parent,
                     std::int64_t depth) {
  const auto id = static_cast<std::int64_t>(snapshot.nodes.size());
  snapshot.nodes.emplace_back();
  AccessibilityNode node;
  node.id = id;
  node.parentID = parent;
  node.depth = depth;
  node.role = accessibilityRoleOf(tree.kind);
  if (tree.title) node.attributes.push_back({"AXTitle", *tree.title});
  for (const std::string& flag : tree.flags) applyFlag(node, flag);
  for (const NotationNode& child : tree.children) node.childIDs.push_back(addTree(snapshot, child, id, depth + 1));
  for (const auto& [key, value] : tree.fields) applyField(node, key, value);
  node.sortAttributes();
  snapshot.nodes[static_cast<std::size_t>(id)] = std::move(node);
  return id;
}

}  // namespace

AccessibilitySnapshot makeSnapshot(std::string_view notation) {
  AccessibilitySnapshot snapshot;
  snapshot.capturedAt = Date(std::chrono::seconds(1'790'000'000));
  snapshot.targetProcessIdentifier = 400;
  addTree(snapshot, parseTree(notation), std::nullopt, 0);
  snapshot.deriveFields();
  return snapshot;
}

AccessibilitySnapshot makeSnapshot(std::string_view notation, std::int64_t focusedNodeID) {
  AccessibilitySnapshot snapshot = makeSnapshot(notation);
  snapshot.focusedNodeID = focusedNodeID;
  return snapshot;
}

}  // namespace quillo::test
