#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Artifacts/EvidenceFileRecords.h"
#include "QuilloCore/Artifacts/EvidenceValidation.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

namespace quillo::CanonicalAccessibilityEvidenceCodec {
namespace {

using Error = CanonicalAccessibilityEvidenceCodecError;
using namespace EvidenceValidation;

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

/// All but the attributes. What the result has room for from an earlier node is used again.
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

CanonicalAccessibilityNode toCanonicalNode(const AccessibilityNode& node, TextNumbers& numbers) {
  CanonicalAccessibilityNode result;
  assignWithoutAttributes(result, node);
  result.attributes.reserve(node.attributes.size());
  for (const auto& attribute : node.attributes)
    result.attributes.push_back({attribute.name, std::visit(ToCanonicalValue{numbers}, attribute.value)});
  return result;
}

std::vector<std::int64_t> takeChildren(std::int64_t nodeID, std::span<CanonicalAccessibilityRelation> relations) {
  CanonicalAccessibilityRelation* children = nullptr;
  for (auto& relation : relations) {
    if (relation.kind != CanonicalAccessibilityRelationKind::children)
      throw Error(Error::UnsupportedRelationKind{nodeID, relation.kind});
    if (children != nullptr) throw Error(Error::DuplicateChildrenRelation{nodeID});
    children = &relation;
  }
  if (children == nullptr) throw Error(Error::MissingChildrenRelation{nodeID});
  return std::move(children->targetNodeIDs);
}

/// All but the attributes.
AccessibilityNode withoutAttributes(CanonicalAccessibilityNode node) {
  return {.id = node.id,
          .parentID = node.parentNodeID,
          .childIDs = takeChildren(node.id, node.relations),
          .depth = node.depth,
          .role = std::move(node.role),
          .subrole = std::move(node.subrole),
          .frame = node.frame,
          .isProtected = node.isProtected,
          .attributes = {}};
}

AccessibilityNode toSnapshotNode(const CanonicalAccessibilityNode& node, const TextBlobTable& texts) {
  AccessibilityNode result = withoutAttributes(node);
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

template <class Record, class Member>
std::type_identity<Member> memberTypeOf(const JsonField<Record, Member>&);

/// Whether a field of a record's table has this type.
template <class Field, class Member>
constexpr bool isOfType = std::is_same_v<Member, typename decltype(memberTypeOf(std::declval<Field>()))::type>;

using CanonicalAttributes = std::vector<CanonicalAccessibilityAttribute>;

/// `node` is without attributes.
void writeNode(JsonWriter& writer, const CanonicalAccessibilityNode& node,
               const std::vector<AccessibilityAttribute>& attributes, TextNumbers& numbers) {
  writer.beginObject();
  forEachSortedField<CanonicalAccessibilityNode>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), CanonicalAttributes>) {
      writer.key(field.key);
      writer.beginArray();
      for (const auto& attribute : attributes)
        writeJson(writer, AttributeInFile{attribute.name, std::visit(ToCanonicalValue{numbers}, attribute.value)});
      writer.endArray();
    } else {
      detail::writeField(writer, node, field);
    }
  });
  writer.endObject();
}

AccessibilityNode readNode(const JsonCursor& cursor, const TextBlobTable& texts) {
  CanonicalAccessibilityNode rest;
  std::vector<AccessibilityAttribute> attributes;
  JsonMembers members(cursor);
  forEachSortedField<CanonicalAccessibilityNode>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), CanonicalAttributes>) {
      const JsonCursor list = members.require(field.key);
      attributes.reserve(list.elementCount());
      list.forEachElement([&](const JsonCursor& element) {
        const auto attribute = readJson<AttributeInFile>(element);
        attributes.push_back({std::string(attribute.name), std::visit(ToSnapshotValue{texts}, attribute.value)});
      });
    } else {
      detail::readField(members, rest, field);
    }
  });
  AccessibilityNode node = withoutAttributes(std::move(rest));
  node.attributes = std::move(attributes);
  node.sortAttributes();
  return node;
}

}  // namespace

CanonicalAccessibilityEvidence makeEvidence(const AccessibilitySnapshot& snapshot) {
  requireConvertible(snapshot);
  const TextInterner interner(collectTexts(snapshot));
  CanonicalAccessibilityEvidence evidence = withoutNodesAndTexts(snapshot, interner);
  Sha256Hasher hasher;
  evidence.textBlobs.reserve(interner.texts().size());
  for (const std::string_view text : interner.texts()) {
    evidence.textBlobs.push_back({.id = std::ssize(evidence.textBlobs),
                                  .sha256 = hexadecimalText(hasher.digest(text)),
                                  .utf8ByteCount = std::ssize(text),
                                  .utf16Length = utf16Length(text),
                                  .text = std::string(text)});
  }
  TextNumbers numbers(interner);
  evidence.nodes.reserve(snapshot.nodes.size());
  for (const auto& node : snapshot.nodes) evidence.nodes.push_back(toCanonicalNode(node, numbers));
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
      TextNumbers numbers(interner);
      CanonicalAccessibilityNode scratch;
      for (const auto& node : snapshot.nodes) {
        assignWithoutAttributes(scratch, node);
        writeNode(writer, scratch, node.attributes, numbers);
      }
      writer.endArray();
    } else if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityTextBlob>>) {
      writer.key(field.key);
      writer.beginArray();
      for (std::int64_t id = 0; const std::string_view text : interner.texts()) {
        const auto digits = hexadecimalDigits(hasher.digest(text));
        writeJson(writer, TextBlobInFile{.id = id++,
                                         .sha256 = {digits.data(), digits.size()},
                                         .utf8ByteCount = std::ssize(text),
                                         .utf16Length = utf16Length(text),
                                         .text = text});
      }
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
  nodes->forEachElement([&](const JsonCursor& node) { snapshot.nodes.push_back(readNode(node, texts)); });
  requireUniqueNodeIDs(snapshot.nodes);
  snapshot.deriveFields();
  return snapshot;
}

}  // namespace quillo::CanonicalAccessibilityEvidenceCodec
