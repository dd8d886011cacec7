#include <array>
#include <set>

#include "CaptureFixture.h"
#include "QuilloCore/Capture/AccessibilityDocumentText.h"

namespace quillo::test {
namespace {

/// Every graph of up to four elements: each element lists any set of the others and itself.
template <class Visit>
void forEachGraph(int elementCount, Visit visit) {
  const unsigned graphCount = 1U << (elementCount * elementCount);
  for (unsigned graph = 0; graph < graphCount; ++graph) visit(graph);
}

bool lists(unsigned graph, int elementCount, int parent, int child) {
  return ((graph >> (parent * elementCount + child)) & 1U) != 0;
}

/// The elements that can be reached from one, found the plain way.
std::set<int> reachableFrom(int start, unsigned graph, int elementCount) {
  std::set<int> reached = {start};
  for (bool grows = true; grows;) {
    grows = false;
    for (const int parent : std::set<int>(reached)) {
      for (int child = 0; child < elementCount; ++child) {
        if (lists(graph, elementCount, parent, child)) grows |= reached.insert(child).second;
      }
    }
  }
  return reached;
}

class SmallGraphs : public CaptureTest {
 protected:
  void connect(unsigned graph, int elementCount) {
    for (int parent = 0; parent < elementCount; ++parent) {
      std::vector<AccessibilityElement> children;
      for (int child = 0; child < elementCount; ++child) {
        if (lists(graph, elementCount, parent, child)) children.push_back(elements[static_cast<std::size_t>(child)]);
      }
      application.setChildren(elements[static_cast<std::size_t>(parent)], children);
    }
    application.calls.clear();
  }
};

TEST_F(SmallGraphs, everyCaptureIsATreeWithReferences) {
  constexpr int count = 4;
  elements = application.addWindows("window number=7");
  for (int i = 1; i < count; ++i) elements.push_back(application.add());
  forEachGraph(count, [&](unsigned graph) {
    connect(graph, count);
    const auto snapshot = capture();
    ASSERT_EQ(findViolation(snapshot), "") << graph;
    ASSERT_EQ(snapshot.nodeCount, std::ssize(reachableFrom(0, graph, count))) << graph;
    std::int64_t referenceCount = 0;
    for (const auto& node : snapshot.nodes) referenceCount += std::ssize(node.childIDs);
    std::int64_t listedCount = 0;
    for (const int parent : reachableFrom(0, graph, count)) {
      for (int child = 0; child < count; ++child) listedCount += lists(graph, count, parent, child) ? 1 : 0;
    }
    ASSERT_EQ(referenceCount, listedCount) << "no reference is lost in graph " << graph;
    ASSERT_TRUE(snapshot.truncations.empty());
  });
}

TEST_F(SmallGraphs, limitsNeverBreakTheTree) {
  constexpr int count = 3;
  elements = application.addWindows("window number=7");
  for (int i = 1; i < count; ++i) elements.push_back(application.add());
  forEachGraph(count, [&](unsigned graph) {
    connect(graph, count);
    const std::int64_t reachable = std::ssize(reachableFrom(0, graph, count));
    for (limits.maximumNodeCount = 1; limits.maximumNodeCount <= count; ++limits.maximumNodeCount) {
      for (limits.childPageSize = 1; limits.childPageSize <= count; ++limits.childPageSize) {
        for (limits.maximumDepth = 0; limits.maximumDepth <= count; ++limits.maximumDepth) {
          const auto snapshot = capture();
          ASSERT_EQ(findViolation(snapshot), "") << graph;
          ASSERT_LE(snapshot.nodeCount, limits.maximumNodeCount);
          if (snapshot.nodeCount < reachable) {
            ASSERT_FALSE(snapshot.truncations.empty()) << "a silent cut in graph " << graph;
          }
          for (const auto& truncation : snapshot.truncations) ASSERT_GE(truncation.omittedCount, 1);
        }
      }
    }
  });
}

TEST_F(SmallGraphs, reachingIsWhatWalkingForwardsFinds) {
  constexpr int count = 4;
  forEachGraph(count, [&](unsigned graph) {
    std::vector<AccessibilityNode> nodes(count);
    for (int i = 0; i < count; ++i) {
      nodes[static_cast<std::size_t>(i)].id = i;
      for (int child = 0; child < count; ++child) {
        if (lists(graph, count, i, child)) nodes[static_cast<std::size_t>(i)].childIDs.push_back(child);
      }
    }
    for (std::int64_t goal = 0; goal < count; ++goal) {
      const std::vector<bool> reaching = nodesReaching(nodes, std::array{goal});
      for (int i = 0; i < count; ++i) {
        ASSERT_EQ(reaching[static_cast<std::size_t>(i)],
                  reachableFrom(i, graph, count).contains(static_cast<int>(goal)));
      }
    }
  });
}

}  // namespace
}  // namespace quillo::test
