#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

#include <cstddef>
#include <optional>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

namespace quillo {
namespace {

/// A text blob as it stands in a parsed file, nothing copied.
struct TextBlobInFile {
  std::int64_t id = 0;
  std::string_view sha256;
  std::int64_t utf8ByteCount = 0;
  std::int64_t utf16Length = 0;
  std::string_view text;
};

}  // namespace

template <>
struct JsonFields<TextBlobInFile> {
  using R = TextBlobInFile;
  static constexpr auto table = std::tuple{jsonField("id", &R::id), jsonField("sha256", &R::sha256),
                                           jsonField("utf8ByteCount", &R::utf8ByteCount),
                                           jsonField("utf16Length", &R::utf16Length), jsonField("text", &R::text)};
};

namespace CanonicalAccessibilityEvidenceCodec {
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

/// Finds texts by their number. Numbers are dense in what we write, but need not be. The blobs must outlive it.
class TextBlobTable {
 public:
  template <class Blob>
  explicit TextBlobTable(const std::vector<Blob>& blobs) {
    for (std::size_t i = 0; i < blobs.size() && isDense_; ++i) isDense_ = std::cmp_equal(blobs[i].id, i);
    if (isDense_) texts_.reserve(blobs.size());
    for (const auto& blob : blobs) {
      if (isDense_) {
        texts_.push_back(blob.text);
      } else if (!byID_.try_emplace(blob.id, blob.text).second) {
        throw Error(Error::DuplicateTextBlobID{blob.id});
      }
    }
  }

  std::string_view text(std::int64_t id) const {
    if (isDense_) {
      if (std::cmp_less(id, 0) || std::cmp_greater_equal(id, texts_.size())) throw Error(Error::MissingTextBlob{id});
      return texts_[static_cast<std::size_t>(id)];
    }
    const auto found = byID_.find(id);
    if (found == byID_.end()) throw Error(Error::MissingTextBlob{id});
    return found->second;
  }

  void require(std::int64_t id) const { text(id); }

 private:
  bool isDense_ = true;
  std::vector<std::string_view> texts_;
  std::unordered_map<std::int64_t, std::string_view> byID_;
};

template <class Blob>
void requireDistinctTexts(const std::vector<Blob>& blobs) {
  bool isAscending = true;
  for (std::size_t i = 1; i < blobs.size() && isAscending; ++i) isAscending = blobs[i - 1].text < blobs[i].text;
  if (isAscending) return;
  std::unordered_map<std::string_view, std::int64_t> seen;
  for (const auto& blob : blobs) {
    const auto [earlier, isNew] = seen.try_emplace(blob.text, blob.id);
    if (!isNew) throw Error(Error::DuplicateTextBlobContent{earlier->second, blob.id});
  }
}

template <class Blob>
void requireMetadata(const std::vector<Blob>& blobs) {
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

std::vector<std::int64_t> takeChildren(CanonicalAccessibilityNode& node) {
  CanonicalAccessibilityRelation* children = nullptr;
  for (auto& relation : node.relations) {
    if (relation.kind != CanonicalAccessibilityRelationKind::children)
      throw Error(Error::UnsupportedRelationKind{node.id, relation.kind});
    if (children != nullptr) throw Error(Error::DuplicateChildrenRelation{node.id});
    children = &relation;
  }
  if (children == nullptr) throw Error(Error::MissingChildrenRelation{node.id});
  return std::move(children->targetNodeIDs);
}

AccessibilityNode toSnapshotNode(CanonicalAccessibilityNode node, const TextBlobTable& texts) {
  AccessibilityNode result{.id = node.id,
                           .parentID = node.parentNodeID,
                           .childIDs = takeChildren(node),
                           .depth = node.depth,
                           .role = std::move(node.role),
                           .subrole = std::move(node.subrole),
                           .frame = node.frame,
                           .isProtected = node.isProtected,
                           .attributes = {}};
  result.attributes.reserve(node.attributes.size());
  for (auto& attribute : node.attributes)
    result.attributes.push_back({std::move(attribute.name), std::visit(ToSnapshotValue{texts}, attribute.value)});
  result.sortAttributes();
  return result;
}

bool isComplete(const AccessibilitySnapshot& snapshot) {
  return std::cmp_equal(snapshot.nodeCount, snapshot.nodes.size()) && !snapshot.wasTruncated &&
         snapshot.truncations.empty() && snapshot.issues.empty();
}

void requireConvertible(const AccessibilitySnapshot& snapshot) {
  if (!isSupportedSnapshotVersion(snapshot.schemaVersion))
    throw Error(Error::UnsupportedSourceSnapshotSchemaVersion{snapshot.schemaVersion});
  requireUniqueNodeIDs(snapshot.nodes);
}

CanonicalAccessibilityEvidence withoutNodesAndTexts(const AccessibilitySnapshot& snapshot,
                                                    const TextInterner& interner) {
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
    coverage.issues.push_back({issue.severity, issue.code, interner.id(issue.message), issue.nodeID, issue.attribute});
  }
  for (const auto& warning : snapshot.warnings) coverage.warningTextBlobIDs.push_back(interner.id(warning));
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

/// About as long as the file gets; where that is too short it costs time only.
std::size_t expectedFileSize(const AccessibilitySnapshot& snapshot, const TextInterner& interner) {
  constexpr std::size_t bytesOfNode = 230;
  constexpr std::size_t bytesOfAttribute = 60;
  constexpr std::size_t bytesOfText = 140;
  std::size_t size = bytesOfNode * (snapshot.nodes.size() + 1);
  for (const auto& node : snapshot.nodes) size += bytesOfAttribute * node.attributes.size();
  for (const std::string_view text : interner.texts()) size += bytesOfText + text.size();
  return size;
}

/// Whether a field of a record's table has this type.
template <class Field, class Member>
constexpr bool isOfType =
    std::is_same_v<Member, std::remove_cvref_t<decltype(std::declval<const CanonicalAccessibilityEvidence&>().*
                                                        std::declval<Field>().member)>>;

}  // namespace

CanonicalAccessibilityEvidence makeEvidence(const AccessibilitySnapshot& snapshot) {
  requireConvertible(snapshot);
  const TextInterner interner(collectTexts(snapshot));
  CanonicalAccessibilityEvidence evidence = withoutNodesAndTexts(snapshot, interner);
  Sha256Hasher hasher;
  evidence.textBlobs.reserve(interner.texts().size());
  for (std::size_t i = 0; i < interner.texts().size(); ++i) evidence.textBlobs.push_back(interner.makeBlob(i, hasher));
  evidence.nodes.reserve(snapshot.nodes.size());
  for (const auto& node : snapshot.nodes) evidence.nodes.push_back(toCanonicalNode(node, interner));
  return evidence;
}

AccessibilitySnapshot makeSnapshot(const CanonicalAccessibilityEvidence& evidence) {
  requireVersions(evidence);
  const TextBlobTable texts(evidence.textBlobs);
  AccessibilitySnapshot snapshot = withoutNodes(evidence, texts);
  snapshot.nodes.reserve(evidence.nodes.size());
  for (const auto& node : evidence.nodes) snapshot.nodes.push_back(toSnapshotNode(node, texts));
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
  requireVersion(document.root());
  auto evidence = readJson<CanonicalAccessibilityEvidence>(document.root());
  validate(evidence);
  return evidence;
}

std::string encodeSnapshot(const AccessibilitySnapshot& snapshot) {
  requireConvertible(snapshot);
  const TextInterner interner(collectTexts(snapshot));
  const CanonicalAccessibilityEvidence rest = withoutNodesAndTexts(snapshot, interner);
  Sha256Hasher hasher;
  JsonWriter writer(JsonStyle::compact, expectedFileSize(snapshot, interner));
  writer.beginObject();
  forEachSortedField<CanonicalAccessibilityEvidence>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityNode>>) {
      writer.key(field.key);
      writer.beginArray();
      for (const auto& node : snapshot.nodes) writeJson(writer, toCanonicalNode(node, interner));
      writer.endArray();
    } else if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityTextBlob>>) {
      writer.key(field.key);
      writer.beginArray();
      for (std::size_t i = 0; i < interner.texts().size(); ++i) writeJson(writer, interner.makeBlob(i, hasher));
      writer.endArray();
    } else {
      detail::writeField(writer, rest, field);
    }
  });
  writer.endObject();
  return writer.takeText();
}

AccessibilitySnapshot decodeSnapshot(std::string_view bytes) {
  return decodeSnapshot(JsonDocument::parse(bytes).root());
}

AccessibilitySnapshot decodeSnapshot(const JsonCursor& root) {
  requireVersion(root);
  CanonicalAccessibilityEvidence rest;
  std::vector<TextBlobInFile> blobs;
  std::optional<JsonCursor> nodes;
  JsonMembers members(root);
  forEachSortedField<CanonicalAccessibilityEvidence>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityNode>>) {
      nodes = members.require(field.key);
    } else if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityTextBlob>>) {
      blobs = readJson<std::vector<TextBlobInFile>>(members.require(field.key));
    } else {
      detail::readField(members, rest, field);
    }
  });
  requireVersions(rest);
  const TextBlobTable texts(blobs);
  requireDistinctTexts(blobs);
  requireMetadata(blobs);
  AccessibilitySnapshot snapshot = withoutNodes(rest, texts);
  snapshot.nodes.reserve(nodes->elementCount());
  nodes->forEachElement([&](const JsonCursor& node) {
    snapshot.nodes.push_back(toSnapshotNode(readJson<CanonicalAccessibilityNode>(node), texts));
  });
  requireUniqueNodeIDs(snapshot.nodes);
  snapshot.deriveFields();
  return snapshot;
}

}  // namespace CanonicalAccessibilityEvidenceCodec
}  // namespace quillo
