#include "QuilloCore/Artifacts/EvidenceConversion.h"

#include <string>
#include <utility>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"

namespace quillo::EvidenceConversion {
namespace {

using Error = CanonicalAccessibilityEvidenceCodecError;
using namespace EvidenceValidation;

struct ToCanonicalValue {
  TextNumbers& numbers;

  CanonicalAccessibilityAttributeValue operator()(const std::string& /*text*/) const {
    return TextBlobReference{numbers.next()};
  }
  CanonicalAccessibilityAttributeValue operator()(const std::vector<std::string>& texts) const {
    TextBlobListReference list;
    list.textBlobIDs.reserve(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) list.textBlobIDs.push_back(numbers.next());
    return list;
  }
  CanonicalAccessibilityAttributeValue operator()(const auto& value) const { return value; }
};

struct ToSnapshotValue {
  const TextBlobTable& texts;

  AccessibilityAttributeValue operator()(const TextBlobReference& reference) const {
    return std::string(texts.text(reference.textBlobID));
  }
  AccessibilityAttributeValue operator()(const TextBlobListReference& reference) const {
    std::vector<std::string> list;
    list.reserve(reference.textBlobIDs.size());
    for (const std::int64_t id : reference.textBlobIDs) list.emplace_back(texts.text(id));
    return list;
  }
  AccessibilityAttributeValue operator()(const auto& value) const { return value; }
};

bool isComplete(const AccessibilitySnapshot& snapshot) {
  return std::cmp_equal(snapshot.nodeCount, snapshot.nodes.size()) && !snapshot.wasTruncated &&
         snapshot.truncations.empty() && snapshot.issues.empty();
}

}  // namespace

std::vector<std::string_view> collectTexts(const AccessibilitySnapshot& snapshot) {
  std::vector<std::string_view> texts;
  for (const auto& node : snapshot.nodes) {
    for (const auto& attribute : node.attributes) {
      if (const auto* text = std::get_if<std::string>(&attribute.value)) texts.emplace_back(*text);
      if (const auto* list = std::get_if<std::vector<std::string>>(&attribute.value))
        texts.insert(texts.end(), list->begin(), list->end());
    }
  }
  for (const auto& issue : snapshot.issues) texts.emplace_back(issue.message);
  texts.insert(texts.end(), snapshot.warnings.begin(), snapshot.warnings.end());
  return texts;
}

CanonicalAccessibilityAttributeValue toCanonicalValue(const AccessibilityAttributeValue& value, TextNumbers& numbers) {
  return std::visit(ToCanonicalValue{numbers}, value);
}

AccessibilityAttributeValue toSnapshotValue(const CanonicalAccessibilityAttributeValue& value,
                                            const TextBlobTable& texts) {
  return std::visit(ToSnapshotValue{texts}, value);
}

void assignWithoutAttributes(CanonicalAccessibilityNode& result, const AccessibilityNode& node) {
  result.id = node.id;
  result.parentNodeID = node.parentID;
  result.depth = node.depth;
  result.role = node.role;
  result.subrole = node.subrole;
  result.frame = node.frame;
  result.isProtected = node.isProtected;
  result.relations.resize(1);
  result.relations.front().targetNodeIDs = node.childIDs;
}

void ChildrenOfNode::add(CanonicalAccessibilityRelation relation) {
  if (relation.kind != CanonicalAccessibilityRelationKind::children)
    throw Error(Error::UnsupportedRelationKind{nodeID_, relation.kind});
  if (children_) throw Error(Error::DuplicateChildrenRelation{nodeID_});
  children_ = std::move(relation.targetNodeIDs);
}

std::vector<std::int64_t> ChildrenOfNode::take() {
  if (!children_) throw Error(Error::MissingChildrenRelation{nodeID_});
  return *std::move(children_);
}

AccessibilityNode withoutAttributes(CanonicalAccessibilityNode node) {
  return {.id = node.id,
          .parentID = node.parentNodeID,
          .childIDs = {},
          .depth = node.depth,
          .role = std::move(node.role),
          .subrole = std::move(node.subrole),
          .frame = node.frame,
          .isProtected = node.isProtected,
          .attributes = {}};
}

void requireConvertible(const AccessibilitySnapshot& snapshot) {
  if (!isSupportedSnapshotVersion(snapshot.schemaVersion))
    throw Error(Error::UnsupportedSourceSnapshotSchemaVersion{snapshot.schemaVersion});
  requireUniqueNodeIDs(snapshot.nodes);
}

CanonicalAccessibilityEvidence withoutNodesAndTexts(const AccessibilitySnapshot& snapshot,
                                                    const TextInterner& interner) {
  TextNumbers numbers(interner);
  numbers.skipTo(snapshot.issues.size() + snapshot.warnings.size());
  CanonicalAccessibilityEvidence evidence;
  evidence.sourceSnapshotSchemaVersion = snapshot.schemaVersion;
  evidence.capturedAt = {snapshot.capturedAt};
  evidence.targetProcessIdentifier = snapshot.targetProcessIdentifier;
  evidence.rootNodeID = snapshot.rootID;
  evidence.focusedNodeID = snapshot.focusedNodeID;
  evidence.rootKind = snapshot.rootKind;
  CanonicalAccessibilityCoverage& coverage = evidence.coverage;
  coverage.isComplete = isComplete(snapshot);
  coverage.nodeCount = snapshot.nodeCount;
  coverage.characterCount = snapshot.characterCount;
  coverage.wasTruncated = snapshot.wasTruncated;
  coverage.truncations = snapshot.truncations;
  for (const auto& issue : snapshot.issues) {
    coverage.issues.push_back({issue.severity, issue.code, numbers.next(), issue.nodeID, issue.attribute});
  }
  for (std::size_t i = 0; i < snapshot.warnings.size(); ++i) coverage.warningTextBlobIDs.push_back(numbers.next());
  return evidence;
}

AccessibilitySnapshot withoutNodes(const CanonicalAccessibilityEvidence& evidence, const TextBlobTable& texts) {
  AccessibilitySnapshot snapshot;
  snapshot.schemaVersion = evidence.sourceSnapshotSchemaVersion;
  snapshot.capturedAt = evidence.capturedAt.date;
  snapshot.targetProcessIdentifier = evidence.targetProcessIdentifier;
  snapshot.rootKind = evidence.rootKind;
  snapshot.rootID = evidence.rootNodeID;
  snapshot.focusedNodeID = evidence.focusedNodeID;
  snapshot.characterCount = evidence.coverage.characterCount;
  snapshot.truncations = evidence.coverage.truncations;
  for (const auto& issue : evidence.coverage.issues) {
    snapshot.issues.push_back(
        {issue.severity, issue.code, std::string(texts.text(issue.messageTextBlobID)), issue.nodeID, issue.attribute});
  }
  for (const std::int64_t id : evidence.coverage.warningTextBlobIDs) snapshot.warnings.emplace_back(texts.text(id));
  return snapshot;
}

void requireVersion(const JsonCursor& root) {
  const auto version = readJson<std::int64_t>(root.require("schemaVersion"));
  if (version != CanonicalAccessibilityEvidence::currentSchemaVersion)
    throw Error(Error::UnsupportedSchemaVersion{version});
}

}  // namespace quillo::EvidenceConversion
