// The walk over whatever graph the child references form, root selection, hoisting, and the account of it all.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"
#include "Tests/Support/ObservationText.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

using AccessibilitySemanticNormalizer::normalize;

constexpr InterfaceNormalizationOptions synthesizing = {.synthesizeApplicationRoot = true,
                                                        .inferConservativeActions = true};
constexpr InterfaceNormalizationOptions plain = {.synthesizeApplicationRoot = false, .inferConservativeActions = true};

/// The slow and obvious version: recursion, lists and sets, and retention told in one line a role.
class ReferenceWalk {
 public:
  struct Draft {
    std::int64_t id = 0;
    std::vector<Draft> children;
  };

  explicit ReferenceWalk(const AccessibilitySnapshot& snapshot) : snapshot_(snapshot) {}

  std::vector<Draft> walk(std::int64_t id) {
    if (id < 0 || id >= std::ssize(snapshot_.nodes)) return ++unavailable, std::vector<Draft>{};
    if (active_.contains(id)) return ++cyclic, std::vector<Draft>{};
    if (!visited_.insert(id).second) return ++shared, std::vector<Draft>{};
    active_.insert(id);
    const AccessibilityNode& node = snapshot_.nodes[static_cast<std::size_t>(id)];
    std::vector<Draft> children;
    for (const std::int64_t child : node.childIDs) {
      for (Draft& draft : walk(child)) children.push_back(std::move(draft));
    }
    active_.erase(id);
    bool isKept = true;
    if (node.role == "AXImage") isKept = false;
    if (node.role == "AXGroup") isKept = children.size() >= 2 || id == snapshot_.rootID;
    if (node.role == "AXList") isKept = !children.empty();
    if (!isKept) return children;
    std::vector<Draft> result;
    result.push_back({id, std::move(children)});
    return result;
  }

  std::int64_t shared = 0;
  std::int64_t cyclic = 0;
  std::int64_t unavailable = 0;

 private:
  const AccessibilitySnapshot& snapshot_;
  std::set<std::int64_t> active_;
  std::set<std::int64_t> visited_;
};

std::string outline(const std::vector<ReferenceWalk::Draft>& drafts) {
  std::string text;
  for (const auto& draft : drafts) text += "(" + std::to_string(draft.id) + outline(draft.children) + ")";
  return text;
}

std::string outline(const InterfaceObservation& observation, const InterfaceElement& element) {
  std::string text = element.sourceNodeID ? "(" + std::to_string(*element.sourceNodeID) : "";
  for (const std::string& id : element.childIDs) text += outline(observation, *observation.element(id));
  return text + (element.sourceNodeID ? ")" : "");
}

/// Calls `visit` with graphs of `count` nodes whose child lists are all the choices of at most `maximumChildren` ids,
/// the missing id `count` among them; even lists ascend and odd ones descend.
template <class Visit>
void forEachGraph(int count, int maximumChildren, Visit visit) {
  std::vector<std::vector<std::int64_t>> lists;
  for (int choice = 0; choice < 1 << (count + 1); ++choice) {
    std::vector<std::int64_t> list;
    for (int id = 0; id <= count; ++id) {
      if ((choice >> id & 1) != 0) list.push_back(id);
    }
    if (std::ssize(list) > maximumChildren) continue;
    if (choice % 2 != 0) list.assign(list.rbegin(), list.rend());
    lists.push_back(std::move(list));
  }
  constexpr std::array<std::string_view, 4> roles = {"AXWindow", "AXImage", "AXGroup", "AXList"};
  std::vector<std::size_t> choice(static_cast<std::size_t>(count));
  for (std::size_t graph = 0;; ++graph) {
    AccessibilitySnapshot snapshot;
    // The roles go through all their combinations while the graphs do; a prime step keeps the two from marching in
    // time.
    std::size_t combination = graph * 37;
    for (int id = 0; id < count; ++id) {
      AccessibilityNode& node = snapshot.nodes.emplace_back();
      node.id = id;
      node.role = roles[combination % roles.size()];
      node.childIDs = lists[choice[static_cast<std::size_t>(id)]];
      combination /= roles.size();
    }
    snapshot.deriveFields();
    visit(snapshot);
    std::size_t digit = 0;
    while (digit < choice.size() && ++choice[digit] == lists.size()) choice[digit++] = 0;
    if (digit == choice.size()) return;
  }
}

std::string describeGraph(const AccessibilitySnapshot& snapshot) {
  std::string text;
  for (const auto& node : snapshot.nodes) {
    text += std::to_string(node.id) + " " + node.role + " ->";
    for (const std::int64_t child : node.childIDs) text += " " + std::to_string(child);
    text += "\n";
  }
  return text;
}

void expectSameAsReference(const AccessibilitySnapshot& snapshot) {
  const InterfaceObservation observation = normalize(snapshot, synthesizing);
  ASSERT_EQ(findViolation(observation), "") << describeGraph(snapshot);
  ReferenceWalk reference(snapshot);
  const auto expected = reference.walk(snapshot.rootID);
  ASSERT_EQ(outline(observation, observation.elements.front()), outline(expected)) << describeGraph(snapshot);
  const auto& counts = observation.completeness;
  ASSERT_EQ(counts.sharedGraphReferenceCount, reference.shared) << describeGraph(snapshot);
  ASSERT_EQ(counts.cyclicGraphReferenceCount, reference.cyclic) << describeGraph(snapshot);
  ASSERT_EQ(counts.unavailableGraphReferenceCount, reference.unavailable) << describeGraph(snapshot);
  ASSERT_EQ(counts.prunedNodeCount, std::ssize(snapshot.nodes) - (std::ssize(observation.elements) - 1))
      << describeGraph(snapshot);
}

TEST(NormalizerGraph, everySmallGraphGivesTheTreeAndCountsOfTheObviousWalk) {
  std::size_t visited = 0;
  for (const auto& [count, maximumChildren] : {std::pair{1, 2}, {2, 3}, {3, 4}, {4, 2}}) {
    forEachGraph(count, maximumChildren, [&](const AccessibilitySnapshot& snapshot) {
      ++visited;
      if (!::testing::Test::HasFatalFailure()) expectSameAsReference(snapshot);
    });
  }
  EXPECT_EQ(visited, 4 + 64 + 4096 + 65536);
}

TEST(NormalizerGraph, rootIsTheApplicationOrSynthesized) {
  struct Case {
    std::string_view label;
    std::string_view notation;
    std::string_view withSynthesis;
    std::string_view without;
  };
  const std::vector<Case> cases = {
      {"a window", "window\n  button 'a'", "- application\n  0 window\n    1 button \"a\" {press?}\n",
       "0 window\n  1 button \"a\" {press?}\n"},
      {"the application", "application 'A'\n  window", "0 application \"A\"\n  1 window\n",
       "0 application \"A\"\n  1 window\n"},
      {"a bare application", "application", "0 application\n", "0 application\n"},
      {"an application inside", "image\n  application 'A'", "- application\n  1 application \"A\"\n",
       "1 application \"A\"\n"},
      {"several top elements", "image\n  button 'a'\n  button 'b'",
       "- application\n  1 button \"a\" {press?}\n  2 button \"b\" {press?}\n", "1 button \"a\" {press?}\n"},
      {"nothing retained", "image", "- application\n", "- application\n"},
      {"a bare group", "group", "- application\n  0 group\n", "0 group\n"},
  };
  for (const Case& one : cases) {
    const AccessibilitySnapshot snapshot = makeSnapshot(one.notation);
    const auto synthesized = normalize(snapshot, synthesizing);
    const auto direct = normalize(snapshot, plain);
    EXPECT_EQ(describe(synthesized), one.withSynthesis) << one.label;
    EXPECT_EQ(describe(direct), one.without) << one.label;
    EXPECT_EQ(findViolation(synthesized) + findViolation(direct), "") << one.label;
  }
  // What the chosen root leaves out counts as pruned.
  EXPECT_EQ(normalize(makeSnapshot("image\n  button 'a'\n  button 'b'"), plain).completeness.prunedNodeCount, 2);
}

TEST(NormalizerGraph, droppedElementsHandTheirChildrenUpInOrder) {
  const auto observation = normalize(makeSnapshot("window\n"
                                                  "  button 'a'\n"
                                                  "  group\n"
                                                  "    image\n"
                                                  "      button 'b'\n"
                                                  "  group\n"
                                                  "    group\n"
                                                  "      button 'c'\n"
                                                  "      text\n"
                                                  "      button 'd'\n"
                                                  "    text\n"
                                                  "  button 'e'\n"),
                                     synthesizing);
  EXPECT_EQ(describe(observation),
            "- application\n"
            "  0 window\n"
            "    1 button \"a\" {press?}\n"
            "    4 button \"b\" {press?}\n"
            "    6 section\n"
            "      7 button \"c\" {press?}\n"
            "      9 button \"d\" {press?}\n"
            "    11 button \"e\" {press?}\n");
}

TEST(NormalizerGraph, completenessCopiesTheCaptureAndCountsReferences) {
  AccessibilitySnapshot snapshot = makeSnapshot(
      "window\n"
      "  group 'a' refs=0,3,77,78\n"
      "    button 'b'\n"
      "  group 'c' refs=2,3\n"
      "  image\n");
  snapshot.truncations = {{AccessibilityTruncationReason::nodeLimit, 4, "AXChildren", 9}};
  snapshot.issues = {{AccessibilityIssueSeverity::warning, "AXFailure", "Could not read.", 3, "AXTitle"}};
  snapshot.warnings = {"Note"};
  snapshot.deriveFields();
  const InterfaceObservation observation = normalize(snapshot, synthesizing);
  InterfaceObservationCompleteness expected;
  expected.sourceNodeCount = 5;
  expected.retainedElementCount = 5;  // with the synthetic root
  expected.prunedNodeCount = 1;
  expected.sharedGraphReferenceCount = 2;       // 3 reached first below 1, then below 0; 2 below 3 after 1
  expected.cyclicGraphReferenceCount = 2;       // 0 below 1, 3 below itself
  expected.unavailableGraphReferenceCount = 2;  // 77 and 78
  expected.ignoredGraphReferenceCount = 6;
  expected.wasSourceTruncated = true;
  expected.sourceTruncations = snapshot.truncations;
  expected.sourceIssues = snapshot.issues;
  expected.warnings = snapshot.warnings;
  EXPECT_EQ(observation.completeness, expected) << describe(observation);
  EXPECT_EQ(observation.observedAt, snapshot.capturedAt);
  EXPECT_EQ(observation.targetProcessIdentifier, 400);

  // The account of a file that contradicts its nodes is handed on as it is.
  snapshot.nodeCount = 12;
  snapshot.wasTruncated = false;
  expected.sourceNodeCount = 12;
  expected.wasSourceTruncated = false;
  EXPECT_EQ(normalize(snapshot, synthesizing).completeness, expected);
}

TEST(NormalizerGraph, firstOfTwoNodesWithOneIdCounts) {
  AccessibilitySnapshot snapshot = makeSnapshot("window\n  button 'first'\n  button 'second'\n");
  snapshot.nodes[2].id = 1;
  snapshot.nodes[0].childIDs = {1, 1, 2};
  const InterfaceObservation observation = normalize(snapshot, synthesizing);
  EXPECT_EQ(describe(observation), "- application\n  0 window\n    1 button \"first\" {press?}\n");
  EXPECT_EQ(observation.completeness.sharedGraphReferenceCount, 1);
  EXPECT_EQ(observation.completeness.unavailableGraphReferenceCount, 1);
  EXPECT_EQ(observation.completeness.prunedNodeCount, 0);
}

TEST(NormalizerGraph, missingRootAndUnusualIdsAreNoTrouble) {
  AccessibilitySnapshot snapshot = makeSnapshot("window\n  button 'a'\n");
  snapshot.rootID = 5;
  const InterfaceObservation rootless = normalize(snapshot, plain);
  EXPECT_EQ(describe(rootless), "- application\n");
  EXPECT_EQ(rootless.completeness.unavailableGraphReferenceCount, 1);
  EXPECT_EQ(rootless.completeness.prunedNodeCount, 2);

  snapshot.nodes[1].role = "AXGroup";
  snapshot.nodes[1].attributes.clear();
  snapshot.rootID = 1;
  EXPECT_EQ(describe(normalize(snapshot, plain)), "1 group\n");

  snapshot = makeSnapshot("window\n  button 'a'\n");
  snapshot.rootID = INT64_MIN;
  snapshot.nodes[0].id = INT64_MIN;
  snapshot.nodes[1].id = INT64_MAX;
  snapshot.nodes[0].childIDs = {INT64_MAX, -1};
  const InterfaceObservation observation = normalize(snapshot, plain);
  EXPECT_EQ(describe(observation), "-9223372036854775808 window\n  9223372036854775807 button \"a\" {press?}\n");
  EXPECT_EQ(findViolation(observation), "");
  EXPECT_EQ(describe(normalize(AccessibilitySnapshot{}, plain)), "- application\n");
}

AccessibilitySnapshot makeChain(std::int64_t length, std::string_view role,
                                const std::vector<AccessibilityAttribute>& attributes) {
  AccessibilitySnapshot snapshot;
  snapshot.nodes.resize(static_cast<std::size_t>(length));
  for (std::int64_t id = 0; id < length; ++id) {
    AccessibilityNode& node = snapshot.nodes[static_cast<std::size_t>(id)];
    node.id = id;
    node.depth = id;
    node.role = role;
    node.attributes = attributes;
    node.childIDs = {id + 1 == length ? 0 : id + 1};
  }
  snapshot.deriveFields();
  return snapshot;
}

TEST(NormalizerGraph, depthIsBoundedByMemoryOnly) {
  constexpr std::int64_t length = 50'000;
  const std::vector<std::pair<std::string_view, std::vector<AccessibilityAttribute>>> chains = {
      {"AXWindow", {}},
      {"AXCell", {{"AXTitle", std::string("cell")}}},
      {"AXTable", {{"AXTitle", std::string("table")}}},
      {"AXRow", {{"AXTitle", std::string("row")}}},
      {"AXWebArea", {{"AXFullText", std::string("all")}}},
  };
  for (const auto& [role, attributes] : chains) {
    const InterfaceObservation observation = normalize(makeChain(length, role, attributes), plain);
    EXPECT_EQ(observation.elements.size(), length) << role;
    EXPECT_EQ(observation.elements.back().depth, length - 1) << role;
    EXPECT_EQ(observation.completeness.cyclicGraphReferenceCount, 1) << role;
  }
  EXPECT_EQ(describe(normalize(makeChain(200'000, "AXImage", {}), plain)), "- application\n");
}

}  // namespace
}  // namespace quillo::test
