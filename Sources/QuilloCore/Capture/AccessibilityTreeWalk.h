#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCapturePolicy.h"
#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityElementInspector.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/AccessibilityStructureReader.h"

namespace quillo {

/// Reads a tree of elements breadth-first. Ids are given in the order of discovery, and an element that is reached
/// again, by another attribute, by another parent or in a circle, is a reference to its node and never a second node.
///
/// One walk is used once, by one thread.
class AccessibilityTreeWalk {
 public:
  /// Both arguments outlive this.
  AccessibilityTreeWalk(AccessibilitySession& session, AccessibilityCaptureState& state)
      : session_(session), state_(state), inspector_(session, state), structure_(session, state) {}

  /// Captures `root` and what lies below it.
  void walk(AccessibilityElement root);

  std::vector<AccessibilityNode>& nodes() { return nodes_; }

  /// The elements of the nodes, indexed by id.
  const std::vector<AccessibilityElement>& elements() const { return elements_; }

  /// The id of a captured element.
  std::optional<std::int64_t> idOf(AccessibilityElement element) const;

  /// What the captured documents offer, by id.
  const std::unordered_map<std::int64_t, AdvertisedAttributeNames>& documentAttributeNames() const {
    return documentAttributeNames_;
  }

 private:
  struct PendingElement {
    std::optional<std::int64_t> parentID;
    std::int64_t depth = 0;
    bool inheritedProtection = false;
  };

  std::int64_t knownCount() const { return std::ssize(elements_); }
  std::int64_t registerElement(AccessibilityElement element, PendingElement pending);
  void announceUpcoming();
  void capture(std::int64_t id);
  std::vector<std::int64_t> captureMembers(const AccessibilityNode& node, const AdvertisedAttributeNames& advertised);

  AccessibilitySession& session_;
  AccessibilityCaptureState& state_;
  AccessibilityElementInspector inspector_;
  AccessibilityStructureReader structure_;
  std::vector<AccessibilityNode> nodes_;
  std::vector<AccessibilityElement> elements_;
  std::vector<PendingElement> pending_;  // indexed by id too: first in, first out
  std::unordered_map<std::uint64_t, std::int64_t> idsByToken_;
  std::unordered_map<std::int64_t, AdvertisedAttributeNames> documentAttributeNames_;
  std::size_t announcedCount_ = 0;
};

}  // namespace quillo
