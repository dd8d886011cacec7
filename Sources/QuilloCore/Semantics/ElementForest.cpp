#include "QuilloCore/Semantics/ElementForest.h"

#include <bit>
#include <functional>
#include <string_view>

namespace quillo {
namespace {

/// Finds elements by their id, of several with one id the first. The table is small enough to stay in the processor's
/// cache, where the entries of a std::unordered_map are not: for 20,000 elements they took a sixth of rendering.
class ElementIDs {
 public:
  explicit ElementIDs(const std::vector<InterfaceElement>& elements)
      : elements_(elements), slots_(std::bit_ceil(2 * elements.size() + 1)) {
    for (ElementIndex i = 0; i < elements.size(); ++i) {
      const std::uint32_t hash = hashOf(elements[i].id);
      Slot& slot = slots_[locate(elements[i].id, hash)];
      if (slot.element == noElement) slot = {hash, i};
    }
  }

  /// `noElement` when there is none.
  ElementIndex find(std::string_view id) const { return slots_[locate(id, hashOf(id))].element; }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    ElementIndex element = noElement;
  };

  static std::uint32_t hashOf(std::string_view id) {
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(id));
  }

  /// The slot of the id, or the free one where it would stand.
  std::size_t locate(std::string_view id, std::uint32_t hash) const {
    std::size_t place = hash & (slots_.size() - 1);
    while (slots_[place].element != noElement &&
           (slots_[place].hash != hash || elements_[slots_[place].element].id != id)) {
      place = (place + 1) & (slots_.size() - 1);
    }
    return place;
  }

  const std::vector<InterfaceElement>& elements_;
  std::vector<Slot> slots_;
};

}  // namespace

class ElementForest::Builder {
 public:
  explicit Builder(ElementForest& forest)
      : forest_(forest), elements_(forest.observation_->elements), elementIDs_(elements_) {
    forest.parents_.assign(elements_.size(), noElement);
    forest.positions_.assign(elements_.size(), unreached);
    forest.subtreeEnds_.assign(elements_.size(), 0);
    forest.preorder_.reserve(elements_.size());
  }

  void build() {
    forest_.root_ = elementIDs_.find(forest_.observation_->rootElementID);
    if (forest_.root_ != noElement) growTree(forest_.root_);
    for (ElementIndex i = 0; i < elements_.size(); ++i) {
      if (forest_.positions_[i] == unreached) growTree(i);
    }
    groupChildren();
  }

 private:
  static constexpr std::size_t unreached = SIZE_MAX;

  struct Visit {
    ElementIndex element;
    std::size_t nextChildID;
  };
  struct Edge {
    ElementIndex parent;
    Child child;
  };

  void enter(ElementIndex element) {
    forest_.positions_[element] = forest_.preorder_.size();
    forest_.preorder_.push_back(element);
    path_.push_back({element, 0});
  }

  void growTree(ElementIndex root) {
    enter(root);
    while (!path_.empty()) {
      Visit& visit = path_.back();
      const ElementIndex parent = visit.element;
      if (visit.nextChildID == elements_[parent].childIDs.size()) {
        forest_.subtreeEnds_[parent] = forest_.preorder_.size();
        path_.pop_back();
        continue;
      }
      const std::string& id = elements_[parent].childIDs[visit.nextChildID++];
      const ElementIndex child = elementIDs_.find(id);
      if (child == noElement) {
        edges_.push_back({parent, {.missingID = &id}});
      } else if (forest_.positions_[child] == unreached) {
        edges_.push_back({parent, {.element = child}});
        forest_.parents_[child] = parent;
        enter(child);
      }
    }
  }

  void groupChildren() {
    std::vector<std::size_t>& begin = forest_.childrenBegin_;
    begin.assign(elements_.size() + 1, 0);
    for (const Edge& edge : edges_) ++begin[edge.parent + 1];
    for (std::size_t i = 1; i < begin.size(); ++i) begin[i] += begin[i - 1];
    forest_.children_.resize(edges_.size());
    std::vector<std::size_t> next(begin.begin(), begin.end() - 1);
    for (const Edge& edge : edges_) forest_.children_[next[edge.parent]++] = edge.child;
  }

  ElementForest& forest_;
  const std::vector<InterfaceElement>& elements_;
  ElementIDs elementIDs_;
  std::vector<Visit> path_;
  std::vector<Edge> edges_;  // those of one parent in their order
};

ElementForest::ElementForest(const InterfaceObservation& observation) : observation_(&observation) {
  Builder(*this).build();
}

std::span<const ElementForest::Child> ElementForest::children(ElementIndex element) const {
  return std::span(children_).subspan(childrenBegin_[element], childrenBegin_[element + 1] - childrenBegin_[element]);
}

std::span<const ElementIndex> ElementForest::subtree(ElementIndex element) const {
  return std::span(preorder_).subspan(positions_[element], subtreeEnds_[element] - positions_[element]);
}

std::span<const ElementIndex> ElementForest::descendants(ElementIndex element) const {
  return subtree(element).subspan(1);
}

}  // namespace quillo
