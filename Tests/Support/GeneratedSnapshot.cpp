#include "Tests/Support/GeneratedSnapshot.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <limits>
#include <random>
#include <string>
#include <string_view>

namespace quillo::test {
namespace {

using namespace std::string_view_literals;

constexpr std::array texts = {""sv,
                              "a"sv,
                              "a/b"sv,
                              "Reply"sv,
                              "\"quoted\" \\ and \t\r\n"sv,
                              "zero\0byte"sv,
                              "\x01\x1f\x7f"sv,
                              "né"sv,
                              "ne\u0301"sv,
                              "👩‍👩‍👧 🇫🇷"sv,
                              "\uFFFD\u2028\uFEFF"sv,
                              "\U0010FFFF"sv};

constexpr std::array integers = {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
                                 std::int64_t{0}, std::int64_t{-1}, (std::int64_t{1} << 53) + 1};

constexpr std::array numbers = {0.0,
                                0.1,
                                -1.5,
                                1e300,
                                5e-324,
                                std::numeric_limits<double>::max(),
                                9007199254740993.0,
                                1e18,
                                18446744073709551616.0,
                                1.0 / 3};

class Generator {
 public:
  explicit Generator(std::uint64_t seed) : random_(seed) {}

  AccessibilitySnapshot generate(std::int64_t maximumNodeCount) {
    AccessibilitySnapshot snapshot;
    snapshot.schemaVersion = below(8) == 0 ? 1 : 2;
    snapshot.capturedAt = Date{std::chrono::microseconds{1'794'692'147'000'000 + below(1'000'000'000'000)}};
    snapshot.targetProcessIdentifier = static_cast<std::int32_t>(below(100'000));
    snapshot.rootKind = static_cast<AccessibilityRootKind>(below(3));
    const std::int64_t count = 1 + below(maximumNodeCount);
    for (std::int64_t id = 0; id < count; ++id) addNode(snapshot, id);
    if (flip()) snapshot.focusedNodeID = below(count);
    for (auto& node : snapshot.nodes) {
      // A reference to a node that was found elsewhere.
      if (below(6) == 0 && node.childIDs.empty()) node.childIDs.push_back(below(count));
    }
    snapshot.characterCount = below(100'000);
    addAccount(snapshot, count);
    snapshot.deriveFields();
    return snapshot;
  }

 private:
  std::int64_t below(std::int64_t bound) { return std::uniform_int_distribution<std::int64_t>(0, bound - 1)(random_); }
  bool flip() { return below(2) == 0; }
  auto pick(const auto& choices) {
    return choices[static_cast<std::size_t>(below(static_cast<std::int64_t>(choices.size())))];
  }
  std::string text() { return std::string(pick(texts)); }

  ArtifactRect rect() { return {pick(numbers), pick(numbers), pick(numbers), pick(numbers)}; }

  AccessibilityAttributeValue value() {
    switch (below(10)) {
      case 0: return text();
      case 1: return flip();
      case 2: return pick(integers);
      case 3: return pick(numbers);
      case 4: return rect();
      case 5: return ArtifactPoint{pick(numbers), pick(numbers)};
      case 6: return ArtifactSize{pick(numbers), pick(numbers)};
      case 7: return ArtifactTextRange{pick(integers), pick(integers)};
      case 8: {
        std::vector<std::string> list(static_cast<std::size_t>(below(4)));
        for (auto& member : list) member = text();
        return list;
      }
      default: return RedactedValue{};
    }
  }

  void addNode(AccessibilitySnapshot& snapshot, std::int64_t id) {
    AccessibilityNode node;
    node.id = id;
    if (id > 0) {
      AccessibilityNode& parent = snapshot.nodes[static_cast<std::size_t>(below(id))];
      parent.childIDs.push_back(id);
      node.parentID = parent.id;
      node.depth = parent.depth + 1;
    }
    node.role = flip() ? "AXGroup" : text();
    if (flip()) node.subrole = text();
    if (flip()) node.frame = rect();
    node.isProtected = below(4) == 0;
    for (std::int64_t i = below(4); i > 0; --i) node.attributes.push_back({"AX" + text(), value()});
    node.sortAttributes();
    snapshot.nodes.push_back(std::move(node));
  }

  void addAccount(AccessibilitySnapshot& snapshot, std::int64_t count) {
    for (std::int64_t i = below(3); i > 0; --i) {
      AccessibilityTruncation truncation;
      truncation.reason = static_cast<AccessibilityTruncationReason>(below(4));
      if (flip()) truncation.nodeID = below(count);
      if (flip()) truncation.attribute = text();
      if (flip()) truncation.omittedCount = pick(integers);
      snapshot.truncations.push_back(std::move(truncation));
    }
    for (std::int64_t i = below(3); i > 0; --i) {
      AccessibilityCaptureIssue issue;
      issue.severity = static_cast<AccessibilityIssueSeverity>(below(2));
      issue.code = "cannotComplete";
      issue.message = text();
      if (flip()) issue.nodeID = below(count);
      if (flip()) issue.attribute = text();
      snapshot.issues.push_back(std::move(issue));
    }
    for (std::int64_t i = below(3); i > 0; --i) snapshot.warnings.push_back(text());
  }

  std::mt19937_64 random_;
};

}  // namespace

AccessibilitySnapshot generateSnapshot(std::uint64_t seed, std::int64_t maximumNodeCount) {
  return Generator(seed).generate(maximumNodeCount);
}

}  // namespace quillo::test
