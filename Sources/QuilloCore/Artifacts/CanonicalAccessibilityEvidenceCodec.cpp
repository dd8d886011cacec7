#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"

#include <iterator>
#include <variant>

#include "QuilloCore/Artifacts/EvidenceConversion.h"
#include "QuilloCore/Artifacts/EvidenceValidation.h"
#include "QuilloCore/Artifacts/TextInterner.h"
#include "QuilloCore/Support/Sha256.h"
#include "QuilloCore/Support/Utf16.h"

namespace quillo::CanonicalAccessibilityEvidenceCodec {
namespace {

using namespace EvidenceConversion;
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

CanonicalAccessibilityNode toCanonicalNode(const AccessibilityNode& node, TextNumbers& numbers) {
  CanonicalAccessibilityNode result;
  assignWithoutAttributes(result, node);
  result.attributes.reserve(node.attributes.size());
  for (const auto& attribute : node.attributes)
    result.attributes.push_back({attribute.name, toCanonicalValue(attribute.value, numbers)});
  return result;
}

AccessibilityNode toSnapshotNode(const CanonicalAccessibilityNode& node, const TextBlobTable& texts) {
  AccessibilityNode result = withoutAttributes(node);
  ChildrenOfNode children(node.id);
  for (const auto& relation : node.relations) children.add(relation);
  result.childIDs = children.take();
  result.attributes.reserve(node.attributes.size());
  for (const auto& attribute : node.attributes)
    result.attributes.push_back({attribute.name, toSnapshotValue(attribute.value, texts)});
  result.sortAttributes();
  return result;
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

}  // namespace quillo::CanonicalAccessibilityEvidenceCodec
