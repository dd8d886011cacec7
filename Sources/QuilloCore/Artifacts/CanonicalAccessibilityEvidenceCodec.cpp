#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

namespace quillo::CanonicalAccessibilityEvidenceCodec {
namespace {

using Error = CanonicalAccessibilityEvidenceCodecError;

bool isSupportedSnapshotVersion(std::int64_t version) {
  return version >= 1 && version <= AccessibilitySnapshot::currentSchemaVersion;
}

void requireVersions(const CanonicalAccessibilityEvidence& evidence) {
  if (evidence.schemaVersion != CanonicalAccessibilityEvidence::currentSchemaVersion)
    throw Error(Error::UnsupportedSchemaVersion{evidence.schemaVersion});
  if (!isSupportedSnapshotVersion(evidence.sourceSnapshotSchemaVersion))
    throw Error(Error::UnsupportedSourceSnapshotSchemaVersion{evidence.sourceSnapshotSchemaVersion});
}

void requireUniqueNodeIDs(const auto& nodes) {
  bool isAscending = true;
  for (std::size_t i = 1; i < nodes.size() && isAscending; ++i) isAscending = nodes[i - 1].id < nodes[i].id;
  if (isAscending) return;
  std::unordered_set<std::int64_t> seen;
  for (const auto& node : nodes) {
    if (!seen.insert(node.id).second) throw Error(Error::DuplicateNodeID{node.id});
  }
}

/// Finds texts by their number. Numbers are dense in what we write, but need not be.
class TextBlobTable {
 public:
  explicit TextBlobTable(const std::vector<CanonicalAccessibilityTextBlob>& blobs) : blobs_(blobs) {
    for (std::size_t i = 0; i < blobs.size() && isDense_; ++i) isDense_ = std::cmp_equal(blobs[i].id, i);
    if (isDense_) return;
    for (const auto& blob : blobs) {
      if (!byID_.try_emplace(blob.id, &blob).second) throw Error(Error::DuplicateTextBlobID{blob.id});
    }
  }

  const std::string& text(std::int64_t id) const {
    if (isDense_) {
      if (std::cmp_less(id, 0) || std::cmp_greater_equal(id, blobs_.size())) throw Error(Error::MissingTextBlob{id});
      return blobs_[static_cast<std::size_t>(id)].text;
    }
    const auto found = byID_.find(id);
    if (found == byID_.end()) throw Error(Error::MissingTextBlob{id});
    return found->second->text;
  }

  void require(std::int64_t id) const { text(id); }

 private:
  const std::vector<CanonicalAccessibilityTextBlob>& blobs_;
  bool isDense_ = true;
  std::unordered_map<std::int64_t, const CanonicalAccessibilityTextBlob*> byID_;
};

void requireDistinctTexts(const std::vector<CanonicalAccessibilityTextBlob>& blobs) {
  bool isAscending = true;
  for (std::size_t i = 1; i < blobs.size() && isAscending; ++i) isAscending = blobs[i - 1].text < blobs[i].text;
  if (isAscending) return;
  std::unordered_map<std::string_view, std::int64_t> seen;
  for (const auto& blob : blobs) {
    const auto [earlier, isNew] = seen.try_emplace(blob.text, blob.id);
    if (!isNew) throw Error(Error::DuplicateTextBlobContent{earlier->second, blob.id});
  }
}

void requireMetadata(const std::vector<CanonicalAccessibilityTextBlob>& blobs) {
  Sha256Hasher hasher;
  for (const auto& blob : blobs) {
    const bool matches = std::cmp_equal(blob.utf8ByteCount, blob.text.size()) &&
                         blob.utf16Length == utf16Length(blob.text) &&
                         blob.sha256 == hexadecimalText(hasher.digest(blob.text));
    if (!matches) throw Error(Error::InvalidTextBlobMetadata{blob.id});
  }
}

void requireReferencedTexts(const CanonicalAccessibilityEvidence& evidence, const TextBlobTable& texts) {
  for (const auto& node : evidence.nodes) {
    for (const auto& attribute : node.attributes) {
      if (const auto* text = std::get_if<TextBlobReference>(&attribute.value)) texts.require(text->textBlobID);
      if (const auto* list = std::get_if<TextBlobListReference>(&attribute.value)) {
        for (const std::int64_t id : list->textBlobIDs) texts.require(id);
      }
    }
  }
  for (const auto& issue : evidence.coverage.issues) texts.require(issue.messageTextBlobID);
  for (const std::int64_t id : evidence.coverage.warningTextBlobIDs) texts.require(id);
}

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

struct ToCanonicalValue {
  const TextInterner& interner;

  CanonicalAccessibilityAttributeValue operator()(const std::string& text) const {
    return TextBlobReference{interner.id(text)};
  }
  CanonicalAccessibilityAttributeValue operator()(const std::vector<std::string>& texts) const {
    TextBlobListReference list;
    list.textBlobIDs.reserve(texts.size());
    for (const auto& text : texts) list.textBlobIDs.push_back(interner.id(text));
    return list;
  }
  CanonicalAccessibilityAttributeValue operator()(const auto& value) const { return value; }
};

struct ToSnapshotValue {
  const TextBlobTable& texts;

  AccessibilityAttributeValue operator()(const TextBlobReference& reference) const {
    return texts.text(reference.textBlobID);
  }
  AccessibilityAttributeValue operator()(const TextBlobListReference& reference) const {
    std::vector<std::string> list;
    list.reserve(reference.textBlobIDs.size());
    for (const std::int64_t id : reference.textBlobIDs) list.push_back(texts.text(id));
    return list;
  }
  AccessibilityAttributeValue operator()(const auto& value) const { return value; }
};

CanonicalAccessibilityNode toCanonicalNode(const AccessibilityNode& node, const TextInterner& interner) {
  CanonicalAccessibilityNode result{.id = node.id,
                                    .parentNodeID = node.parentID,
                                    .depth = node.depth,
                                    .role = node.role,
                                    .subrole = node.subrole,
                                    .frame = node.frame,
                                    .isProtected = node.isProtected,
                                    .attributes = {},
                                    .relations = {}};
  result.attributes.reserve(node.attributes.size());
  for (const auto& attribute : node.attributes)
    result.attributes.push_back({attribute.name, std::visit(ToCanonicalValue{interner}, attribute.value)});
  result.relations.push_back({CanonicalAccessibilityRelationKind::children, node.childIDs});
  return result;
}

const std::vector<std::int64_t>& childrenOf(const CanonicalAccessibilityNode& node) {
  const CanonicalAccessibilityRelation* children = nullptr;
  for (const auto& relation : node.relations) {
    if (relation.kind != CanonicalAccessibilityRelationKind::children)
      throw Error(Error::UnsupportedRelationKind{node.id, relation.kind});
    if (children != nullptr) throw Error(Error::DuplicateChildrenRelation{node.id});
    children = &relation;
  }
  if (children == nullptr) throw Error(Error::MissingChildrenRelation{node.id});
  return children->targetNodeIDs;
}

AccessibilityNode toSnapshotNode(const CanonicalAccessibilityNode& node, const TextBlobTable& texts) {
  AccessibilityNode result{.id = node.id,
                           .parentID = node.parentNodeID,
                           .childIDs = childrenOf(node),
                           .depth = node.depth,
                           .role = node.role,
                           .subrole = node.subrole,
                           .frame = node.frame,
                           .isProtected = node.isProtected,
                           .attributes = {}};
  result.attributes.reserve(node.attributes.size());
  for (const auto& attribute : node.attributes)
    result.attributes.push_back({attribute.name, std::visit(ToSnapshotValue{texts}, attribute.value)});
  result.sortAttributes();
  return result;
}

bool isComplete(const AccessibilitySnapshot& snapshot) {
  return std::cmp_equal(snapshot.nodeCount, snapshot.nodes.size()) && !snapshot.wasTruncated &&
         snapshot.truncations.empty() && snapshot.issues.empty();
}

}  // namespace

CanonicalAccessibilityEvidence makeEvidence(const AccessibilitySnapshot& snapshot) {
  if (!isSupportedSnapshotVersion(snapshot.schemaVersion))
    throw Error(Error::UnsupportedSourceSnapshotSchemaVersion{snapshot.schemaVersion});
  requireUniqueNodeIDs(snapshot.nodes);

  const std::vector<std::string_view> texts = collectTexts(snapshot);
  const TextInterner interner(texts);
  CanonicalAccessibilityEvidence evidence;
  evidence.sourceSnapshotSchemaVersion = snapshot.schemaVersion;
  evidence.capturedAt = {snapshot.capturedAt};
  evidence.targetProcessIdentifier = snapshot.targetProcessIdentifier;
  evidence.rootNodeID = snapshot.rootID;
  evidence.focusedNodeID = snapshot.focusedNodeID;
  evidence.rootKind = snapshot.rootKind;
  evidence.textBlobs = interner.makeBlobs();
  evidence.nodes.reserve(snapshot.nodes.size());
  for (const auto& node : snapshot.nodes) evidence.nodes.push_back(toCanonicalNode(node, interner));

  CanonicalAccessibilityCoverage& coverage = evidence.coverage;
  coverage.isComplete = isComplete(snapshot);
  coverage.nodeCount = snapshot.nodeCount;
  coverage.characterCount = snapshot.characterCount;
  coverage.wasTruncated = snapshot.wasTruncated;
  coverage.truncations = snapshot.truncations;
  for (const auto& issue : snapshot.issues) {
    coverage.issues.push_back({issue.severity, issue.code, interner.id(issue.message), issue.nodeID, issue.attribute});
  }
  for (const auto& warning : snapshot.warnings) coverage.warningTextBlobIDs.push_back(interner.id(warning));
  return evidence;
}

AccessibilitySnapshot makeSnapshot(const CanonicalAccessibilityEvidence& evidence) {
  requireVersions(evidence);
  const TextBlobTable texts(evidence.textBlobs);
  AccessibilitySnapshot snapshot;
  snapshot.schemaVersion = evidence.sourceSnapshotSchemaVersion;
  snapshot.capturedAt = evidence.capturedAt.date;
  snapshot.targetProcessIdentifier = evidence.targetProcessIdentifier;
  snapshot.rootKind = evidence.rootKind;
  snapshot.rootID = evidence.rootNodeID;
  snapshot.focusedNodeID = evidence.focusedNodeID;
  snapshot.nodes.reserve(evidence.nodes.size());
  for (const auto& node : evidence.nodes) snapshot.nodes.push_back(toSnapshotNode(node, texts));
  snapshot.characterCount = evidence.coverage.characterCount;
  snapshot.truncations = evidence.coverage.truncations;
  for (const auto& issue : evidence.coverage.issues) {
    snapshot.issues.push_back(
        {issue.severity, issue.code, texts.text(issue.messageTextBlobID), issue.nodeID, issue.attribute});
  }
  for (const std::int64_t id : evidence.coverage.warningTextBlobIDs) snapshot.warnings.push_back(texts.text(id));
  snapshot.deriveFields();
  return snapshot;
}

void validate(const CanonicalAccessibilityEvidence& evidence) {
  requireVersions(evidence);
  const TextBlobTable texts(evidence.textBlobs);
  requireDistinctTexts(evidence.textBlobs);
  requireMetadata(evidence.textBlobs);
  requireUniqueNodeIDs(evidence.nodes);
  requireReferencedTexts(evidence, texts);
}

std::string encode(const CanonicalAccessibilityEvidence& evidence) {
  validate(evidence);
  return encodeJson(evidence, JsonStyle::compact);
}

CanonicalAccessibilityEvidence decode(std::string_view bytes) {
  const JsonDocument document = JsonDocument::parse(bytes);
  return decode(document.root());
}

CanonicalAccessibilityEvidence decode(const JsonCursor& root) {
  const auto version = readJson<std::int64_t>(root.require("schemaVersion"));
  if (version != CanonicalAccessibilityEvidence::currentSchemaVersion)
    throw Error(Error::UnsupportedSchemaVersion{version});
  auto evidence = readJson<CanonicalAccessibilityEvidence>(root);
  validate(evidence);
  return evidence;
}

std::string encodeSnapshot(const AccessibilitySnapshot& snapshot) {
  // As `encode`, without computing every digest a second time: what has just been made is valid.
  return encodeJson(makeEvidence(snapshot), JsonStyle::compact);
}

AccessibilitySnapshot decodeSnapshot(std::string_view bytes) {
  return makeSnapshot(decode(bytes));
}

AccessibilitySnapshot decodeSnapshot(const JsonCursor& root) {
  return makeSnapshot(decode(root));
}

}  // namespace quillo::CanonicalAccessibilityEvidenceCodec
