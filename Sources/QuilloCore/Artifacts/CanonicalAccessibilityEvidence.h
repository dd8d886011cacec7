#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"
#include "QuilloCore/Support/RareOptional.h"

namespace quillo {

/// A moment that is written as the number of seconds since 2001-01-01T00:00:00Z, and read from that number or from an
/// ISO 8601 text.
struct EvidenceDate {
  Date date;

  friend bool operator==(const EvidenceDate&, const EvidenceDate&) = default;
};

/// One distinct text of a capture. Digest and lengths are redundant on purpose: they show damage.
struct CanonicalAccessibilityTextBlob {
  std::int64_t id = 0;
  std::string sha256;  ///< of the UTF-8 bytes: 64 lower-case hexadecimal digits
  std::int64_t utf8ByteCount = 0;
  std::int64_t utf16Length = 0;
  std::string text;

  friend bool operator==(const CanonicalAccessibilityTextBlob&, const CanonicalAccessibilityTextBlob&) = default;
};

/// Stands for the text of a blob.
struct TextBlobReference {
  std::int64_t textBlobID = 0;

  friend bool operator==(const TextBlobReference&, const TextBlobReference&) = default;
};

/// Stands for a list of texts, in order.
struct TextBlobListReference {
  std::vector<std::int64_t> textBlobIDs;

  friend bool operator==(const TextBlobListReference&, const TextBlobListReference&) = default;
};

/// As AccessibilityAttributeValue, with references in place of the texts. As JSON an object with "type" and the payload
/// under "value", or under "textBlobID" or "textBlobIDs".
using CanonicalAccessibilityAttributeValue =
    std::variant<TextBlobReference, bool, std::int64_t, double, ArtifactRect, ArtifactPoint, ArtifactSize,
                 ArtifactTextRange, TextBlobListReference, RedactedValue>;

struct CanonicalAccessibilityAttribute {
  std::string name;
  CanonicalAccessibilityAttributeValue value;

  friend bool operator==(const CanonicalAccessibilityAttribute&, const CanonicalAccessibilityAttribute&) = default;
};

/// How nodes belong together. This version writes and accepts `children` only; the others are reserved.
enum class CanonicalAccessibilityRelationKind : std::uint8_t {
  children,
  contents,
  rows,
  visibleRows,
  columns,
  tabs,
  sections,
  navigationOrder
};

struct CanonicalAccessibilityRelation {
  CanonicalAccessibilityRelationKind kind = CanonicalAccessibilityRelationKind::children;
  std::vector<std::int64_t> targetNodeIDs;  ///< in order

  friend bool operator==(const CanonicalAccessibilityRelation&, const CanonicalAccessibilityRelation&) = default;
};

struct CanonicalAccessibilityNode {
  std::int64_t id = 0;
  std::optional<std::int64_t> parentNodeID;
  std::int64_t depth = 0;
  std::string role;
  RareOptional<std::string> subrole;
  std::optional<ArtifactRect> frame;
  bool isProtected = false;
  std::vector<CanonicalAccessibilityAttribute> attributes;
  std::vector<CanonicalAccessibilityRelation> relations;  ///< exactly one, of kind `children`

  friend bool operator==(const CanonicalAccessibilityNode&, const CanonicalAccessibilityNode&) = default;
};

struct CanonicalAccessibilityIssue {
  AccessibilityIssueSeverity severity = AccessibilityIssueSeverity::warning;
  std::string code;
  std::int64_t messageTextBlobID = 0;
  std::optional<std::int64_t> nodeID;
  std::optional<std::string> attribute;

  friend bool operator==(const CanonicalAccessibilityIssue&, const CanonicalAccessibilityIssue&) = default;
};

/// How much of the window the capture holds.
struct CanonicalAccessibilityCoverage {
  bool isComplete = false;  ///< nothing truncated, no issue, and every counted node present
  std::int64_t nodeCount = 0;
  std::int64_t characterCount = 0;
  bool wasTruncated = false;
  std::vector<AccessibilityTruncation> truncations;
  std::vector<CanonicalAccessibilityIssue> issues;
  std::vector<std::int64_t> warningTextBlobIDs;

  friend bool operator==(const CanonicalAccessibilityCoverage&, const CanonicalAccessibilityCoverage&) = default;
};

/// The form in which a bundle keeps its raw capture: exactly the information of an AccessibilitySnapshot, every text
/// once. Equal captures have equal evidence, so that their files are equal byte for byte.
struct CanonicalAccessibilityEvidence {
  static constexpr std::int64_t currentSchemaVersion = 3;

  std::int64_t schemaVersion = currentSchemaVersion;
  std::int64_t sourceSnapshotSchemaVersion = AccessibilitySnapshot::currentSchemaVersion;
  EvidenceDate capturedAt;
  std::int32_t targetProcessIdentifier = 0;
  std::int64_t rootNodeID = 0;
  std::optional<std::int64_t> focusedNodeID;
  AccessibilityRootKind rootKind = AccessibilityRootKind::focusedWindow;
  std::vector<CanonicalAccessibilityTextBlob> textBlobs;  ///< ascending by id
  std::vector<CanonicalAccessibilityNode> nodes;          ///< in the snapshot's order
  CanonicalAccessibilityCoverage coverage;

  friend bool operator==(const CanonicalAccessibilityEvidence&, const CanonicalAccessibilityEvidence&) = default;
};

template <>
struct EnumerationNames<CanonicalAccessibilityRelationKind> {
  static constexpr std::array<std::string_view, 8> names = {"children", "contents", "rows",     "visibleRows",
                                                            "columns",  "tabs",     "sections", "navigationOrder"};
};

template <>
struct JsonCodec<EvidenceDate> {
  static void write(JsonWriter& writer, const EvidenceDate& date);
  static EvidenceDate read(const JsonCursor& cursor);
};

template <>
struct JsonCodec<CanonicalAccessibilityAttributeValue> {
  static void write(JsonWriter& writer, const CanonicalAccessibilityAttributeValue& value);
  static CanonicalAccessibilityAttributeValue read(const JsonCursor& cursor);
};

template <>
struct JsonFields<CanonicalAccessibilityTextBlob> {
  using R = CanonicalAccessibilityTextBlob;
  static constexpr auto table = std::tuple{jsonField("id", &R::id), jsonField("sha256", &R::sha256),
                                           jsonField("utf8ByteCount", &R::utf8ByteCount),
                                           jsonField("utf16Length", &R::utf16Length), jsonField("text", &R::text)};
};

template <>
struct JsonFields<CanonicalAccessibilityAttribute> {
  using R = CanonicalAccessibilityAttribute;
  static constexpr auto table = std::tuple{jsonField("name", &R::name), jsonField("value", &R::value)};
};

template <>
struct JsonFields<CanonicalAccessibilityRelation> {
  using R = CanonicalAccessibilityRelation;
  static constexpr auto table = std::tuple{jsonField("kind", &R::kind), jsonField("targetNodeIDs", &R::targetNodeIDs)};
};

template <>
struct JsonFields<CanonicalAccessibilityNode> {
  using R = CanonicalAccessibilityNode;
  static constexpr auto table = std::tuple{jsonField("id", &R::id),
                                           jsonField("parentNodeID", &R::parentNodeID),
                                           jsonField("depth", &R::depth),
                                           jsonField("role", &R::role),
                                           jsonField("subrole", &R::subrole),
                                           jsonField("frame", &R::frame),
                                           jsonField("isProtected", &R::isProtected),
                                           jsonField("attributes", &R::attributes),
                                           jsonField("relations", &R::relations)};
};

template <>
struct JsonFields<CanonicalAccessibilityIssue> {
  using R = CanonicalAccessibilityIssue;
  static constexpr auto table = std::tuple{jsonField("severity", &R::severity), jsonField("code", &R::code),
                                           jsonField("messageTextBlobID", &R::messageTextBlobID),
                                           jsonField("nodeID", &R::nodeID), jsonField("attribute", &R::attribute)};
};

template <>
struct JsonFields<CanonicalAccessibilityCoverage> {
  using R = CanonicalAccessibilityCoverage;
  static constexpr auto table = std::tuple{jsonField("isComplete", &R::isComplete),
                                           jsonField("nodeCount", &R::nodeCount),
                                           jsonField("characterCount", &R::characterCount),
                                           jsonField("wasTruncated", &R::wasTruncated),
                                           jsonField("truncations", &R::truncations),
                                           jsonField("issues", &R::issues),
                                           jsonField("warningTextBlobIDs", &R::warningTextBlobIDs)};
};

template <>
struct JsonFields<CanonicalAccessibilityEvidence> {
  using R = CanonicalAccessibilityEvidence;
  static constexpr auto table = std::tuple{jsonField("schemaVersion", &R::schemaVersion),
                                           jsonField("sourceSnapshotSchemaVersion", &R::sourceSnapshotSchemaVersion),
                                           jsonField("capturedAt", &R::capturedAt),
                                           jsonField("targetProcessIdentifier", &R::targetProcessIdentifier),
                                           jsonField("rootNodeID", &R::rootNodeID),
                                           jsonField("focusedNodeID", &R::focusedNodeID),
                                           jsonField("rootKind", &R::rootKind),
                                           jsonField("textBlobs", &R::textBlobs),
                                           jsonField("nodes", &R::nodes),
                                           jsonField("coverage", &R::coverage)};
};

}  // namespace quillo
