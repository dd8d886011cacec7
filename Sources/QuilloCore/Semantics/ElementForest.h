#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "QuilloCore/Semantics/ElementIndexSet.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// The references of an observation's elements, resolved once into trees in which each element stands exactly once: the
/// tree from the root, and then, in source order, one tree for each element that was not reached. Of several references
/// to one element the first in pre-order counts, and of several elements with one id the first; so neither cycles nor
/// false parents reach the readers of a forest. The observation must outlive it.
class ElementForest {
 public:
  struct Child {
    ElementIndex element = noElement;
    const std::string* missingID = nullptr;  ///< set instead when no element has that id
  };

  explicit ElementForest(const InterfaceObservation& observation);

  std::size_t size() const { return parents_.size(); }
  const InterfaceElement& operator[](ElementIndex element) const { return observation_->elements[element]; }

  ElementIndex root() const { return root_; }  ///< `noElement` when the observation's root is missing
  ElementIndex parent(ElementIndex element) const { return parents_[element]; }
  std::span<const Child> children(ElementIndex element) const;

  /// All elements in pre-order, tree after tree. The subtree of an element is the stretch [position, subtreeEnd).
  std::span<const ElementIndex> preorder() const { return preorder_; }
  std::size_t position(ElementIndex element) const { return positions_[element]; }
  std::size_t subtreeEnd(ElementIndex element) const { return subtreeEnds_[element]; }
  std::span<const ElementIndex> subtree(ElementIndex element) const;      ///< itself first
  std::span<const ElementIndex> descendants(ElementIndex element) const;  ///< without itself

 private:
  class Builder;

  const InterfaceObservation* observation_;
  ElementIndex root_ = noElement;
  std::vector<ElementIndex> parents_;
  std::vector<ElementIndex> preorder_;
  std::vector<std::size_t> positions_;
  std::vector<std::size_t> subtreeEnds_;
  std::vector<Child> children_;             // grouped by parent
  std::vector<std::size_t> childrenBegin_;  // one more than there are elements
};

}  // namespace quillo
