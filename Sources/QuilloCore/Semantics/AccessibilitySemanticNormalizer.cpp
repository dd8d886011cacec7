#include "QuilloCore/Semantics/AccessibilitySemanticNormalizer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "QuilloCore/Semantics/InterfaceDocumentTextConsolidation.h"
#include "QuilloCore/Semantics/InterfaceDraftTree.h"
#include "QuilloCore/Semantics/InterfaceElementMapping.h"
#include "QuilloCore/Semantics/InterfaceRetention.h"
#include "QuilloCore/Semantics/InterfaceTableAggregation.h"

namespace quillo::AccessibilitySemanticNormalizer {
namespace {

constexpr std::uint32_t none = UINT32_MAX;

/// Finds nodes by id. Captures number their nodes densely; other snapshots take the slower way. Of nodes with the same
/// id the first counts.
class NodeIndex {
 public:
  explicit NodeIndex(const std::vector<AccessibilityNode>& nodes) : nodes_(nodes) {
    for (std::size_t i = 0; i < nodes.size() && isDense_; ++i) {
      isDense_ = nodes[i].id == static_cast<std::int64_t>(i);
    }
    if (isDense_) return;
    for (std::size_t i = 0; i < nodes.size(); ++i) positions_.try_emplace(nodes[i].id, static_cast<std::uint32_t>(i));
  }

  /// The node's position in the list, or `none`.
  std::uint32_t find(std::int64_t id) const {
    if (isDense_) {
      const bool isInside = id >= 0 && std::cmp_less(id, nodes_.size());
      return isInside ? static_cast<std::uint32_t>(id) : none;
    }
    const auto found = positions_.find(id);
    return found == positions_.end() ? none : found->second;
  }

  std::size_t count() const { return isDense_ ? nodes_.size() : positions_.size(); }

 private:
  const std::vector<AccessibilityNode>& nodes_;
  bool isDense_ = true;
  std::unordered_map<std::int64_t, std::uint32_t> positions_;
};

std::optional<ArtifactRect> findViewport(const std::vector<AccessibilityNode>& nodes) {
  const AccessibilityNode* window = nullptr;
  for (const AccessibilityNode& node : nodes) {
    if (node.role == "AXWindow" && (window == nullptr || node.id < window->id)) window = &node;
  }
  return window == nullptr ? std::nullopt : window->frame;
}

/// A list of sibling drafts that is joined to another in constant time, however often it is handed upwards.
struct DraftList {
  std::uint32_t first = none;
  std::uint32_t last = none;
  std::uint32_t count = 0;
  std::uint32_t elementCount = 0;  // without the empty cells
};

/// Depth-first over the node graph; each node yields at most one element, at its first reference.
class GraphWalk {
 public:
  GraphWalk(const AccessibilitySnapshot& snapshot, const NodeIndex& index, const InterfaceMappingContext& context)
      : snapshot_(snapshot), index_(index), context_(context) {
    isVisited_.resize(snapshot.nodes.size());
    isActive_.resize(snapshot.nodes.size());
    tree_.elements.reserve(snapshot.nodes.size() + 1);  // no element moves; pages that stay unused cost nothing
    tree_.children.reserve(snapshot.nodes.size() + 1);
    next_.reserve(snapshot.nodes.size() + 1);
    addDraft();  // the place of a synthetic root
  }

  std::vector<InterfaceDraftIndex> run() {
    DraftList result;
    if (enter(snapshot_.rootID)) {
      while (!path_.empty()) {
        Frame& frame = path_.back();
        const AccessibilityNode& node = snapshot_.nodes[frame.position];
        if (frame.nextChild < node.childIDs.size()) {
          enter(node.childIDs[frame.nextChild++]);
          continue;
        }
        const DraftList yielded = leave();
        append(path_.empty() ? result : path_.back().results, yielded);
      }
    }
    return members(result);
  }

  InterfaceDraftTree takeTree() { return std::move(tree_); }

  std::int64_t sharedGraphReferenceCount = 0;
  std::int64_t cyclicGraphReferenceCount = 0;
  std::int64_t unavailableGraphReferenceCount = 0;

 private:
  struct Frame {
    std::uint32_t position;
    InterfaceDraftIndex draft;
    std::size_t nextChild = 0;
    DraftList results = {};
  };

  bool enter(std::int64_t id) {
    const std::uint32_t position = index_.find(id);
    if (position == none) {
      ++unavailableGraphReferenceCount;
      return false;
    }
    if (isActive_[position]) {
      ++cyclicGraphReferenceCount;
      return false;
    }
    if (isVisited_[position]) {
      ++sharedGraphReferenceCount;
      return false;
    }
    isVisited_[position] = true;
    isActive_[position] = true;
    path_.push_back({.position = position, .draft = addDraft()});
    return true;
  }

  InterfaceDraftIndex addDraft() {
    tree_.elements.emplace_back();
    tree_.children.emplace_back();
    tree_.isEmptyCell.push_back(false);
    next_.push_back(none);
    return static_cast<InterfaceDraftIndex>(tree_.elements.size() - 1);
  }

  void dropDraft(InterfaceDraftIndex draft) {
    if (draft + 1 < tree_.elements.size()) {
      tree_.elements[draft] = {};
      return;
    }
    tree_.elements.pop_back();
    tree_.children.pop_back();
    tree_.isEmptyCell.pop_back();
    next_.pop_back();
  }

  DraftList leave() {
    const Frame frame = path_.back();
    path_.pop_back();
    isActive_[frame.position] = false;
    const AccessibilityNode& node = snapshot_.nodes[frame.position];
    const std::uint32_t retainedChildCount = frame.results.elementCount;
    InterfaceElement& element = tree_.elements[frame.draft];
    mapElement(element, node, retainedChildCount, context_);
    const bool isRetained = shouldRetain(element, retainedChildCount, node.id == snapshot_.rootID);
    const bool isEmptyCell = !isRetained && element.role == InterfaceSemanticRole::cell && retainedChildCount == 0;
    if (!isRetained && !isEmptyCell) {
      dropDraft(frame.draft);
      return frame.results;
    }
    if (isEmptyCell) element.sourceNodeID.reset();
    if (isRetained) tree_.children[frame.draft] = members(frame.results);
    tree_.isEmptyCell[frame.draft] = isEmptyCell;
    return {.first = frame.draft, .last = frame.draft, .count = 1, .elementCount = isRetained ? 1U : 0U};
  }

  void append(DraftList& list, const DraftList& more) {
    if (more.count == 0) return;
    if (list.count == 0) {
      list = more;
      return;
    }
    next_[list.last] = more.first;
    list.last = more.last;
    list.count += more.count;
    list.elementCount += more.elementCount;
  }

  std::vector<InterfaceDraftIndex> members(const DraftList& list) const {
    std::vector<InterfaceDraftIndex> drafts;
    drafts.reserve(list.count);
    std::uint32_t draft = list.first;
    for (std::uint32_t i = 0; i < list.count; ++i) {
      drafts.push_back(draft);
      draft = next_[draft];
    }
    return drafts;
  }

  const AccessibilitySnapshot& snapshot_;
  const NodeIndex& index_;
  const InterfaceMappingContext& context_;
  std::vector<bool> isVisited_;
  std::vector<bool> isActive_;
  std::vector<Frame> path_;
  InterfaceDraftTree tree_;
  std::vector<std::uint32_t> next_;  // for each element the next one of the list that it is in
};

InterfaceElement makeSyntheticRoot() {
  InterfaceElement root;
  root.id = "application-root";
  root.role = InterfaceSemanticRole::application;
  root.accessibilityRole = "SyntheticApplication";
  return root;
}

void selectRoot(InterfaceDraftTree& tree, std::vector<InterfaceDraftIndex> topLevel, bool synthesizes,
                std::int64_t sourceRootID) {
  if (topLevel.size() == 1) {
    const InterfaceElement& only = tree.elements[topLevel.front()];
    const bool isSourceRoot = only.sourceNodeID == sourceRootID;
    if (only.role == InterfaceSemanticRole::application && (!synthesizes || isSourceRoot)) {
      tree.root = topLevel.front();
      return;
    }
  }
  if (!synthesizes && !topLevel.empty()) {
    tree.root = topLevel.front();
    return;
  }
  tree.root = 0;
  tree.elements.front() = makeSyntheticRoot();
  tree.children.front() = std::move(topLevel);
}

std::vector<InterfaceDraftIndex> preorder(const InterfaceDraftTree& tree) {
  std::vector<InterfaceDraftIndex> order;
  for (InterfaceDraftPreorder walk(tree, tree.root); !walk.isAtEnd();) order.push_back(walk.next());
  return order;
}

std::int64_t countRepresentedNodes(const InterfaceDraftTree& tree) {
  return std::ranges::count_if(
      preorder(tree), [&](InterfaceDraftIndex index) { return tree.elements[index].sourceNodeID.has_value(); });
}

/// Drops the elements that the order, an ascending one, does not name. In place, because a second copy of all elements
/// would cost more memory than anything else here.
void keepOnly(std::vector<InterfaceElement>& elements, const std::vector<InterfaceDraftIndex>& order) {
  for (std::size_t place = 0; place < order.size(); ++place) {
    if (order[place] != place) elements[place] = std::move(elements[order[place]]);
  }
  elements.erase(elements.begin() + static_cast<std::ptrdiff_t>(order.size()), elements.end());
  if (elements.size() < elements.capacity() / 2) elements.shrink_to_fit();
}

std::vector<InterfaceElement> flatten(InterfaceDraftTree tree) {
  const std::vector<InterfaceDraftIndex> order = preorder(tree);
  for (const InterfaceDraftIndex index : order) {
    InterfaceElement& element = tree.elements[index];
    element.childIDs.reserve(tree.children[index].size());
    for (const InterfaceDraftIndex child : tree.children[index]) {
      InterfaceElement& childElement = tree.elements[child];
      childElement.parentID = element.id;
      childElement.depth = element.depth + 1;
      element.childIDs.push_back(childElement.id);
    }
  }
  keepOnly(tree.elements, order);
  return std::move(tree.elements);
}

/// The counts are of things in memory, so an overflow means that memory is corrupt.
std::int64_t checkedSum(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(a, b, &sum)) {
    std::fputs("quillo: a count of graph references overflowed\n", stderr);
    std::abort();
  }
  return sum;
}

}  // namespace

InterfaceObservation normalize(const AccessibilitySnapshot& snapshot, InterfaceNormalizationOptions options) {
  const NodeIndex index(snapshot.nodes);
  const InterfaceMappingContext context{.viewport = findViewport(snapshot.nodes),
                                        .focusedNodeID = snapshot.focusedNodeID,
                                        .inferActions = options.inferConservativeActions};
  GraphWalk walk(snapshot, index, context);
  std::vector<InterfaceDraftIndex> topLevel = walk.run();
  InterfaceDraftTree tree = walk.takeTree();
  std::erase_if(topLevel, [&](InterfaceDraftIndex draft) { return tree.isEmptyCell[draft]; });
  selectRoot(tree, std::move(topLevel), options.synthesizeApplicationRoot, snapshot.rootID);

  const std::int64_t representedNodes = countRepresentedNodes(tree);
  aggregateTabularStructures(tree);
  consolidateAuthoritativeDocumentText(tree);

  InterfaceObservation observation;
  observation.observedAt = snapshot.capturedAt;
  observation.targetProcessIdentifier = snapshot.targetProcessIdentifier;
  observation.sourceRootKind = snapshot.rootKind;
  observation.elements = flatten(std::move(tree));
  observation.rootElementID = observation.elements.front().id;

  InterfaceObservationCompleteness& completeness = observation.completeness;
  completeness.sourceNodeCount = snapshot.nodeCount;
  completeness.retainedElementCount = static_cast<std::int64_t>(observation.elements.size());
  completeness.prunedNodeCount = std::max<std::int64_t>(0, static_cast<std::int64_t>(index.count()) - representedNodes);
  completeness.sharedGraphReferenceCount = walk.sharedGraphReferenceCount;
  completeness.cyclicGraphReferenceCount = walk.cyclicGraphReferenceCount;
  completeness.unavailableGraphReferenceCount = walk.unavailableGraphReferenceCount;
  completeness.ignoredGraphReferenceCount = checkedSum(
      checkedSum(walk.sharedGraphReferenceCount, walk.cyclicGraphReferenceCount), walk.unavailableGraphReferenceCount);
  completeness.wasSourceTruncated = snapshot.wasTruncated;
  completeness.sourceTruncations = snapshot.truncations;
  completeness.sourceIssues = snapshot.issues;
  completeness.warnings = snapshot.warnings;
  return observation;
}

}  // namespace quillo::AccessibilitySemanticNormalizer
