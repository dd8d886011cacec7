// The conversions of the codec that never hold a whole capture's evidence.

#include <array>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/EvidenceConversion.h"
#include "QuilloCore/Artifacts/EvidenceFileRecords.h"
#include "QuilloCore/Artifacts/EvidenceValidation.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

namespace quillo::CanonicalAccessibilityEvidenceCodec {
namespace {

using namespace EvidenceConversion;
using namespace EvidenceValidation;

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
      writer.plainKey(field.key);
      writer.beginArray();
      for (const auto& attribute : attributes)
        writeJson(writer, AttributeInFile{attribute.name, toCanonicalValue(attribute.value, numbers)});
      writer.endArray();
    } else {
      detail::writeField(writer, node, field);
    }
  });
  writer.endObject();
}

/// A node as it stands in the file.
struct NodeInFile {
  AccessibilityNode node;  ///< without attributes
  std::vector<AttributeInFile> attributes;
};

std::optional<std::int64_t> textOf(const AttributeInFile& attribute) {
  const auto* text = std::get_if<TextBlobReference>(&attribute.value);
  return text == nullptr ? std::nullopt : std::optional(text->textBlobID);
}

void prefetchTexts(const NodeInFile& read, const TextBlobTable& texts) {
  for (const AttributeInFile& attribute : read.attributes) {
    if (const auto text = textOf(attribute)) texts.prefetchText(*text);
  }
}

void readNode(const JsonCursor& cursor, const TextBlobTable& texts, NodeInFile& result) {
  CanonicalAccessibilityNode rest;
  JsonMembers members(cursor);
  std::vector<std::int64_t> childIDs;
  forEachSortedField<CanonicalAccessibilityNode>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), CanonicalAttributes>) {
      result.attributes.clear();
      members.require(field.key).forEachElement([&](const JsonCursor& element) {
        const auto& attribute = result.attributes.emplace_back(readJson<AttributeInFile>(element));
        if (const auto text = textOf(attribute)) texts.prefetchPlace(*text);
      });
    } else if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityRelation>>) {
      ChildrenOfNode children(rest.id);
      members.require(field.key).forEachElement(
          [&](const JsonCursor& element) { children.add(readJson<CanonicalAccessibilityRelation>(element)); });
      childIDs = children.take();
    } else {
      detail::readField(members, rest, field);
    }
  });
  result.node = withoutAttributes(std::move(rest));
  result.node.childIDs = std::move(childIDs);
}

AccessibilityNode takeNode(NodeInFile& read, const TextBlobTable& texts) {
  AccessibilityNode node = std::move(read.node);
  node.attributes.reserve(read.attributes.size());
  for (const auto& attribute : read.attributes)
    node.attributes.push_back({std::string(attribute.name), toSnapshotValue(attribute.value, texts)});
  node.sortAttributes();
  return node;
}

/// The texts lie all over the document. Nodes are read some ahead of taking them, so that their texts come meanwhile:
/// at first where they are, half way through the texts themselves.
std::vector<AccessibilityNode> readNodes(const JsonCursor& list, const TextBlobTable& texts) {
  std::array<NodeInFile, 16> ahead;
  std::vector<AccessibilityNode> nodes;
  nodes.reserve(list.elementCount());
  std::size_t readCount = 0;
  const auto takeNext = [&] { nodes.push_back(takeNode(ahead[nodes.size() % ahead.size()], texts)); };
  list.forEachElement([&](const JsonCursor& element) {
    if (readCount >= ahead.size()) takeNext();
    if (readCount >= ahead.size() / 2) prefetchTexts(ahead[(readCount - ahead.size() / 2) % ahead.size()], texts);
    readNode(element, texts, ahead[readCount++ % ahead.size()]);
  });
  while (nodes.size() < readCount) takeNext();
  return nodes;
}

}  // namespace

std::string encodeSnapshot(const AccessibilitySnapshot& snapshot) {
  requireConvertible(snapshot);
  const TextInterner interner(collectTexts(snapshot));
  const CanonicalAccessibilityEvidence rest = withoutNodesAndTexts(snapshot, interner);
  Sha256Hasher hasher;
  JsonWriter writer(JsonStyle::compact, expectedFileSize(snapshot, interner));
  writer.beginObject();
  forEachSortedField<CanonicalAccessibilityEvidence>([&](const auto& field) {
    if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityNode>>) {
      writer.plainKey(field.key);
      writer.beginArray();
      TextNumbers numbers(interner);
      CanonicalAccessibilityNode scratch;
      for (const auto& node : snapshot.nodes) {
        assignWithoutAttributes(scratch, node);
        writeNode(writer, scratch, node.attributes, numbers);
      }
      writer.endArray();
    } else if constexpr (isOfType<decltype(field), std::vector<CanonicalAccessibilityTextBlob>>) {
      writer.plainKey(field.key);
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
  snapshot.nodes = readNodes(*nodes, texts);
  requireUniqueNodeIDs(snapshot.nodes);
  snapshot.deriveFields();
  return snapshot;
}

}  // namespace quillo::CanonicalAccessibilityEvidenceCodec
