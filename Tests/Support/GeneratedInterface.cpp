#include "Tests/Support/GeneratedInterface.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Support/Utf8.h"

namespace quillo::test {
namespace {

constexpr auto roles = std::to_array<std::string_view>({"AXWindow",
                                                        "AXApplication",
                                                        "AXGroup",
                                                        "AXStaticText",
                                                        "AXButton",
                                                        "AXTextField",
                                                        "AXTextArea",
                                                        "AXWebArea",
                                                        "AXDocument",
                                                        "AXTable",
                                                        "AXRow",
                                                        "AXColumn",
                                                        "AXCell",
                                                        "AXOutline",
                                                        "AXOutlineRow",
                                                        "AXList",
                                                        "AXListItem",
                                                        "AXHeading",
                                                        "AXLink",
                                                        "AXImage",
                                                        "AXCheckBox",
                                                        "AXMenu",
                                                        "AXMenuItem",
                                                        "AXScrollArea",
                                                        "AXScrollBar",
                                                        "AXComboBox",
                                                        "AXSlider",
                                                        "AXLandmarkNavigation",
                                                        "AXTabGroup",
                                                        "AXUnknown",
                                                        ""});
constexpr auto subroles =
    std::to_array<std::string_view>({"AXColumnHeader", "AXRowHeader", "AXDialog", "AXSearchField"});
constexpr auto textNames = std::to_array<std::string_view>(
    {"AXTitle", "AXValue", "AXDescription", "AXHelp", "AXPlaceholderValue", "AXSelectedText", "AXLabel",
     "AXRoleDescription", "AXIdentifier", "AXDOMIdentifier", "AXURL", "AXARIACurrent", "AXValueDescription"});
constexpr auto flagNames = std::to_array<std::string_view>(
    {"AXFocused", "AXSelected", "AXEnabled", "AXHidden", "AXOffscreen", "AXVisible", "AXExpanded", "AXEdited"});
constexpr auto numberNames = std::to_array<std::string_view>(
    {"AXHeadingLevel", "AXDisclosureLevel", "AXIndex", "AXValue", "AXARIASetSize", "AXChecked"});
// Few, so that texts repeat and contain one another.
constexpr auto words = std::to_array<std::string_view>({"alpha", "Beta", "gamma,", "deltaEpsilon", "15", "1500", "—",
                                                        "你好", "\n", "\r\n", "\u00a0", "⟦caret⟧", "- ", "\u202e"});

/// Which element one mostly finds in another.
std::string_view usualChild(std::string_view role) {
  constexpr auto usual = std::to_array<std::pair<std::string_view, std::string_view>>({{"AXTable", "AXRow"},
                                                                                       {"AXOutline", "AXOutlineRow"},
                                                                                       {"AXRow", "AXCell"},
                                                                                       {"AXOutlineRow", "AXCell"},
                                                                                       {"AXWindow", "AXTable"},
                                                                                       {"AXWebArea", "AXDocument"},
                                                                                       {"AXDocument", "AXTextArea"},
                                                                                       {"AXList", "AXListItem"},
                                                                                       {"AXMenu", "AXMenuItem"}});
  const auto found = std::ranges::find(usual, role, &std::pair<std::string_view, std::string_view>::first);
  return found == usual.end() ? "AXStaticText" : found->second;
}

class Generator {
 public:
  explicit Generator(FuzzedDataProvider& bytes) : bytes_(bytes) {}

  AccessibilitySnapshot generate() {
    isChain_ = oneIn(16);
    const bool hasGaps = oneIn(8);
    count_ = upTo(isChain_ ? 200 : 40);
    AccessibilitySnapshot snapshot;
    snapshot.rootKind = oneIn(2) ? AccessibilityRootKind::application : AccessibilityRootKind::focusedWindow;
    snapshot.rootID = oneIn(16) ? anyID() : 0;
    if (oneIn(2)) snapshot.focusedNodeID = anyID();
    while (std::ssize(snapshot.nodes) < count_ && bytes_.remaining_bytes() > 0) addAnywhere(snapshot.nodes);
    if (hasGaps) spread(snapshot);
    snapshot.deriveFields();
    if (oneIn(16)) std::ranges::reverse(snapshot.nodes);
    return snapshot;
  }

 private:
  std::int64_t upTo(std::int64_t limit) { return bytes_.ConsumeIntegralInRange<std::int64_t>(0, limit); }
  bool oneIn(std::int64_t chances) { return upTo(chances - 1) == chances - 1; }
  std::int64_t anyID() { return upTo(count_ + 2) - 1; }
  template <std::size_t size>
  std::string pick(const std::array<std::string_view, size>& choices) {
    return std::string(choices[static_cast<std::size_t>(upTo(size - 1))]);
  }

  std::string text(std::int64_t maximumWordCount) {
    if (oneIn(4)) return replacingInvalidUtf8(bytes_.ConsumeRandomLengthString(24));
    std::string result = pick(words);
    for (std::int64_t i = upTo(maximumWordCount - 1); i > 0; --i)
      result.append(oneIn(4) ? "" : " ").append(pick(words));
    return result;
  }

  AccessibilityAttribute attribute() {
    switch (upTo(7)) {
      case 0: return {pick(flagNames), oneIn(2)};
      case 1: return {pick(numberNames), oneIn(4) ? bytes_.ConsumeIntegral<std::int64_t>() : upTo(3)};
      case 2: return {pick(numberNames), static_cast<double>(upTo(9)) / 4};
      case 3:
        return {oneIn(2) ? "AXSelectedTextRange" : "AXVisibleCharacterRange",
                ArtifactTextRange{bytes_.ConsumeIntegral<std::int8_t>(), bytes_.ConsumeIntegral<std::int16_t>()}};
      case 4: return {oneIn(2) ? "AXActions" : "AXDOMClassList", std::vector<std::string>{"AXPress", text(2)}};
      case 5: return {pick(textNames), RedactedValue{}};
      default: return {pick(textNames), text(3)};
    }
  }

  ArtifactRect frame() {
    const auto coordinate = [&] { return bytes_.ConsumeIntegral<std::int8_t>() * 9.0; };
    return {coordinate(), coordinate(), coordinate(), coordinate()};
  }

  /// Below the node before it, or below one of that one's ancestors.
  void addAnywhere(std::vector<AccessibilityNode>& nodes) {
    for (std::int64_t up = isChain_ ? 0 : upTo(3); up > 0 && path_.size() > 1; --up) path_.pop_back();
    if (path_.empty()) {
      path_.push_back(add(nodes, nullptr, oneIn(4) ? pick(roles) : "AXWindow"));
      return;
    }
    AccessibilityNode& parent = nodes[path_.back()];
    path_.push_back(add(nodes, &parent, oneIn(2) ? pick(roles) : std::string(usualChild(parent.role))));
    if (nodes.back().role == "AXTable" && oneIn(2)) addRows(nodes, path_.back());
  }

  void addRows(std::vector<AccessibilityNode>& nodes, std::size_t table) {
    const std::int64_t columnCount = 1 + upTo(2);
    bool isHeader = oneIn(2);
    for (std::int64_t row = upTo(3); row > 0; --row, isHeader = false) {
      const std::size_t parent = add(nodes, &nodes[table], "AXRow");
      for (std::int64_t column = columnCount; column > 0; --column) {
        AccessibilityNode& cell = nodes[add(nodes, &nodes[parent], "AXCell")];
        if (isHeader) cell.subrole = "AXColumnHeader";
      }
    }
  }

  /// The new node's position.
  std::size_t add(std::vector<AccessibilityNode>& nodes, AccessibilityNode* parent, std::string role) {
    AccessibilityNode node;
    node.id = oneIn(32) ? anyID() : std::ssize(nodes);
    node.role = std::move(role);
    if (parent != nullptr) {
      node.parentID = parent->id;
      node.depth = parent->depth + 1;
      parent->childIDs.push_back(node.id);
    }
    if (oneIn(8)) node.subrole = pick(subroles);
    if (oneIn(8)) node.childIDs.push_back(anyID());
    if (oneIn(4)) node.frame = frame();
    node.isProtected = oneIn(16);
    for (std::int64_t i = upTo(3); i > 0; --i) node.attributes.push_back(attribute());
    if (oneIn(4)) node.attributes.push_back({"AXFullText", text(6)});
    if (!oneIn(16)) node.sortAttributes();
    nodes.push_back(std::move(node));
    return nodes.size() - 1;
  }

  static void spread(AccessibilitySnapshot& snapshot) {
    const auto move = [](std::int64_t& id) { id = 3 * id - 20; };
    move(snapshot.rootID);
    if (snapshot.focusedNodeID) move(*snapshot.focusedNodeID);
    for (AccessibilityNode& node : snapshot.nodes) {
      move(node.id);
      std::ranges::for_each(node.childIDs, move);
    }
  }

  FuzzedDataProvider& bytes_;
  bool isChain_ = false;
  std::int64_t count_ = 0;
  std::vector<std::size_t> path_;  // positions of the last node and its ancestors
};

}  // namespace

AccessibilitySnapshot generateInterface(FuzzedDataProvider& bytes) {
  return Generator(bytes).generate();
}

}  // namespace quillo::test
