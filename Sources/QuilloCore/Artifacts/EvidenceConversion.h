#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"
#include "QuilloCore/Artifacts/EvidenceValidation.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"

/// The steps between a snapshot and evidence that are the same whether the evidence is held as a record or only passes
/// by on its way to or from a file. The functions throw CanonicalAccessibilityEvidenceCodecError.
namespace quillo::EvidenceConversion {

/// Every text of the nodes, then of the issues, then of the warnings, in order and with repetitions.
std::vector<std::string_view> collectTexts(const AccessibilitySnapshot& snapshot);

/// The numbers of a snapshot's texts, in the order in which `collectTexts` meets them.
class TextNumbers {
 public:
  explicit TextNumbers(const TextInterner& interner) : ids_(interner.ids()) {}

  std::int64_t next() { return ids_[position_++]; }

  /// Passes over the texts of the nodes.
  void skipTo(std::size_t countOfTheLast) { position_ = ids_.size() - countOfTheLast; }

 private:
  const std::vector<std::int64_t>& ids_;
  std::size_t position_ = 0;
};

CanonicalAccessibilityAttributeValue toCanonicalValue(const AccessibilityAttributeValue& value, TextNumbers& numbers);
AccessibilityAttributeValue toSnapshotValue(const CanonicalAccessibilityAttributeValue& value,
                                            const EvidenceValidation::TextBlobTable& texts);

/// All but the attributes. What the result has room for from an earlier node is used again.
void assignWithoutAttributes(CanonicalAccessibilityNode& result, const AccessibilityNode& node);

/// Takes the children from a node's relations, of which there must be one for them and no other.
class ChildrenOfNode {
 public:
  explicit ChildrenOfNode(std::int64_t nodeID) : nodeID_(nodeID) {}

  void add(CanonicalAccessibilityRelation relation);
  std::vector<std::int64_t> take();

 private:
  std::int64_t nodeID_;
  std::optional<std::vector<std::int64_t>> children_;
};

/// All but the attributes and the children.
AccessibilityNode withoutAttributes(CanonicalAccessibilityNode node);

/// Throws if evidence cannot be made from the snapshot.
void requireConvertible(const AccessibilitySnapshot& snapshot);

CanonicalAccessibilityEvidence withoutNodesAndTexts(const AccessibilitySnapshot& snapshot,
                                                    const TextInterner& interner);
AccessibilitySnapshot withoutNodes(const CanonicalAccessibilityEvidence& evidence,
                                   const EvidenceValidation::TextBlobTable& texts);

/// Looks at the version before the rest, which may be of another shape.
void requireVersion(const JsonCursor& root);

}  // namespace quillo::EvidenceConversion
