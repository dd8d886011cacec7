#include "Tests/Support/SnapshotText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <type_traits>

namespace quillo::test {
namespace {

std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '\n') {
      result += "\\n";
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string describe(const AccessibilityNode& node) {
  std::string line = fmt::format("{:{}}{} {}", "", node.depth * 2, node.id, node.role);
  if (node.subrole) line += "/" + *node.subrole;
  if (!node.childIDs.empty()) line += fmt::format(" -> {}", fmt::join(node.childIDs, " "));
  if (node.frame) {
    line += fmt::format(" ({},{},{},{})", node.frame->x, node.frame->y, node.frame->width, node.frame->height);
  }
  if (node.isProtected) line += " protected";
  for (const auto& attribute : node.attributes) {
    if (attribute.name == "AXPosition" || attribute.name == "AXSize") continue;
    line += fmt::format(" {}={}", attribute.name, test::describe(attribute.value));
  }
  return line;
}

std::string place(const std::optional<std::int64_t>& nodeID, const std::optional<std::string>& attribute) {
  return (nodeID ? fmt::format(" node {}", *nodeID) : "") + (attribute ? " " + *attribute : "");
}

}  // namespace

std::string describe(const AccessibilityAttributeValue& value) {
  return std::visit(
      [](const auto& payload) -> std::string {
        using Payload = std::remove_cvref_t<decltype(payload)>;
        if constexpr (std::is_same_v<Payload, std::string>) {
          return quoted(payload);
        } else if constexpr (std::is_same_v<Payload, std::vector<std::string>>) {
          return fmt::format("[{}]", fmt::join(payload, ","));
        } else if constexpr (std::is_same_v<Payload, ArtifactTextRange>) {
          return fmt::format("{}+{}", payload.location, payload.length);
        } else if constexpr (std::is_same_v<Payload, ArtifactRect>) {
          return fmt::format("({},{},{},{})", payload.x, payload.y, payload.width, payload.height);
        } else if constexpr (std::is_same_v<Payload, ArtifactPoint>) {
          return fmt::format("({},{})", payload.x, payload.y);
        } else if constexpr (std::is_same_v<Payload, ArtifactSize>) {
          return fmt::format("{}x{}", payload.width, payload.height);
        } else if constexpr (std::is_same_v<Payload, RedactedValue>) {
          return "redacted";
        } else {
          return fmt::format("{}", payload);
        }
      },
      value);
}

std::string describe(const AccessibilitySnapshot& snapshot) {
  std::string text;
  for (const auto& node : snapshot.nodes) text += describe(node) + "\n";
  for (const auto& truncation : snapshot.truncations) {
    text += fmt::format("{}{}", nameOf(truncation.reason), place(truncation.nodeID, truncation.attribute));
    if (truncation.omittedCount) text += fmt::format(" omitted {}", *truncation.omittedCount);
    text += "\n";
  }
  for (const auto& issue : snapshot.issues) {
    text += fmt::format("{} {}{}: {}\n", nameOf(issue.severity), issue.code, place(issue.nodeID, issue.attribute),
                        issue.message);
  }
  for (const auto& warning : snapshot.warnings) text += "! " + warning + "\n";
  return text;
}

std::string findViolation(const AccessibilitySnapshot& snapshot) {
  const auto count = std::ssize(snapshot.nodes);
  if (count == 0 || snapshot.nodeCount != count) return "the node count is wrong";
  if (snapshot.rootID != 0) return "the root is not node 0";
  if (snapshot.wasTruncated != !snapshot.truncations.empty()) return "wasTruncated is wrong";
  for (std::int64_t i = 0; i < count; ++i) {
    const auto& node = snapshot.nodes[static_cast<std::size_t>(i)];
    if (node.id != i) return fmt::format("node {} stands at {}", node.id, i);
    if (!std::ranges::is_sorted(node.attributes, {}, &AccessibilityAttribute::name)) {
      return fmt::format("the attributes of {} are out of order", i);
    }
    std::set<std::int64_t> seen;
    for (const std::int64_t child : node.childIDs) {
      if (child < 0 || child >= count) return fmt::format("{} lists {}, which is not there", i, child);
      if (!seen.insert(child).second) return fmt::format("{} lists {} twice", i, child);
    }
    if (i == 0) {
      if (node.parentID || node.depth != 0) return "the root has a parent or a depth";
      continue;
    }
    if (!node.parentID || *node.parentID < 0 || *node.parentID >= i)
      return fmt::format("{} has no parent before it", i);
    const auto& parent = snapshot.nodes[static_cast<std::size_t>(*node.parentID)];
    if (node.depth != parent.depth + 1) return fmt::format("{} stands at a wrong depth", i);
    if (std::ranges::count(parent.childIDs, i) != 1) return fmt::format("{} is not listed by its parent", i);
    if (parent.isProtected && !node.isProtected) return fmt::format("{} lost its parent's protection", i);
  }
  for (const auto& node : snapshot.nodes) {
    for (const auto& attribute : node.attributes) {
      const bool isText = std::holds_alternative<std::string>(attribute.value) ||
                          std::holds_alternative<std::vector<std::string>>(attribute.value);
      if (node.isProtected && isText) return fmt::format("the protected node {} keeps {}", node.id, attribute.name);
    }
  }
  return {};
}

}  // namespace quillo::test
