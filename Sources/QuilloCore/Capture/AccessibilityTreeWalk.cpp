#include "QuilloCore/Capture/AccessibilityTreeWalk.h"

#include <algorithm>
#include <span>
#include <utility>

namespace quillo {
namespace {

// How many elements the session knows ahead, and when it hears of more. Far enough for a hundred messages in flight,
// and not so far that elements are fetched which the limits then leave out.
constexpr std::size_t announcedAhead = 256;
constexpr std::size_t announceAgainBelow = 128;

}  // namespace

void AccessibilityTreeWalk::walk(AccessibilityElement root) {
  constexpr std::int64_t largestReservation = 1024;
  nodes_.reserve(static_cast<std::size_t>(std::min(state_.configuration().maximumNodeCount, largestReservation)));
  registerElement(root, {});
  while (std::cmp_less(nodes_.size(), knownCount())) {
    state_.checkpoint();
    announceUpcoming();
    capture(std::ssize(nodes_));
  }
}

std::optional<std::int64_t> AccessibilityTreeWalk::idOf(AccessibilityElement element) const {
  const auto found = idsByToken_.find(element.token);
  return found == idsByToken_.end() ? std::nullopt : std::optional(found->second);
}

std::int64_t AccessibilityTreeWalk::registerElement(AccessibilityElement element, PendingElement pending) {
  const std::int64_t id = knownCount();
  elements_.push_back(element);
  pending_.push_back(pending);
  idsByToken_.emplace(element.token, id);
  return id;
}

void AccessibilityTreeWalk::announceUpcoming() {
  const std::size_t next = nodes_.size();
  if (announcedCount_ == elements_.size() || announcedCount_ - next >= announceAgainBelow) return;
  const std::size_t end = std::min(elements_.size(), next + announcedAhead);
  session_.willRead(std::span(elements_).subspan(announcedCount_, end - announcedCount_));
  announcedCount_ = end;
}

void AccessibilityTreeWalk::capture(std::int64_t id) {
  const AccessibilityElement element = elements_[static_cast<std::size_t>(id)];
  const PendingElement pending = pending_[static_cast<std::size_t>(id)];
  AccessibilityElementInspection inspection = inspector_.inspect(element, id, pending.inheritedProtection);

  AccessibilityNode node;
  node.id = id;
  node.parentID = pending.parentID;
  node.depth = pending.depth;
  node.role = std::move(inspection.role);
  node.subrole = std::move(inspection.subrole);
  node.frame = inspection.frame;
  node.isProtected = inspection.isProtected;
  node.attributes = std::move(inspection.attributes);
  node.sortAttributes();
  if (node.depth < state_.configuration().maximumDepth) {
    node.childIDs = captureMembers(node, inspection.attributeNames);
  } else if (const std::int64_t count = structure_.childCount(element, inspection.attributeNames, id); count > 0) {
    state_.addTruncation({AccessibilityTruncationReason::depthLimit, id, std::nullopt, count});
  }
  if (AccessibilityCapturePolicy::isDocumentRole(node.role)) {
    documentAttributeNames_.emplace(id, std::move(inspection.attributeNames));
  }
  nodes_.push_back(std::move(node));
}

std::vector<std::int64_t> AccessibilityTreeWalk::captureMembers(const AccessibilityNode& node,
                                                                const AdvertisedAttributeNames& advertised) {
  const auto& limits = state_.configuration();
  const std::int64_t room = std::max<std::int64_t>(limits.maximumNodeCount - knownCount(), 0);
  // One page more than there is room for, because members may be known already.
  const std::int64_t maximumCount =
      room < limits.maximumNodeCount - limits.childPageSize ? room + limits.childPageSize : limits.maximumNodeCount;
  auto [members, omittedCount] =
      structure_.children(elements_[static_cast<std::size_t>(node.id)], advertised, maximumCount, node.id);

  std::vector<std::int64_t> childIDs;
  for (const AccessibilityElement member : members) {
    if (state_.control().stopReason()) break;  // the next checkpoint throws
    if (const auto knownID = idOf(member)) {
      childIDs.push_back(*knownID);
    } else if (knownCount() < limits.maximumNodeCount) {
      childIDs.push_back(registerElement(member, {node.id, node.depth + 1, node.isProtected}));
    } else {
      ++omittedCount;
    }
  }
  if (omittedCount > 0) {
    state_.addTruncation({AccessibilityTruncationReason::nodeLimit, node.id, std::nullopt, omittedCount});
  }
  return childIDs;
}

}  // namespace quillo
