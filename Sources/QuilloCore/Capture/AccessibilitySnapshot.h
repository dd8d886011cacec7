#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Capture/AccessibilityAttributeValue.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/RareOptional.h"

namespace quillo {

/// Which element the walk started from.
enum class AccessibilityRootKind : std::uint8_t { focusedWindow, mainWindow, application };

enum class AccessibilityIssueSeverity : std::uint8_t { information, warning };

/// Which safety limit cut something off.
enum class AccessibilityTruncationReason : std::uint8_t { nodeLimit, depthLimit, characterLimit, attributeValueLimit };

struct AccessibilityAttribute {
  std::string name;  ///< "AXValue", or a synthetic name: "AXFullText", "AXActions"
  AccessibilityAttributeValue value;

  friend bool operator==(const AccessibilityAttribute&, const AccessibilityAttribute&) = default;
};

/// One captured element. Ids are dense and in discovery order. `childIDs` may name a node that was first found under
/// another parent; no id stands there twice.
struct AccessibilityNode {
  std::int64_t id = 0;
  std::optional<std::int64_t> parentID;  ///< absent for the root
  std::vector<std::int64_t> childIDs;    ///< in discovery order
  std::int64_t depth = 0;
  std::string role;
  RareOptional<std::string> subrole;
  std::optional<ArtifactRect> frame;
  bool isProtected = false;                        ///< its own or inherited; its texts are redacted or absent
  std::vector<AccessibilityAttribute> attributes;  ///< ascending by name

  /// The value of the attribute of that name, or null.
  const AccessibilityAttributeValue* attribute(std::string_view name) const;

  /// Restores the order of `attributes` (stable).
  void sortAttributes();

  friend bool operator==(const AccessibilityNode&, const AccessibilityNode&) = default;
};

/// A problem met while reading; it did not end the capture.
struct AccessibilityCaptureIssue {
  AccessibilityIssueSeverity severity = AccessibilityIssueSeverity::warning;
  std::string code;     ///< "AXIncompleteTextRead" or the name of an accessibility error
  std::string message;  ///< a sentence for people
  std::optional<std::int64_t> nodeID;
  std::optional<std::string> attribute;

  friend bool operator==(const AccessibilityCaptureIssue&, const AccessibilityCaptureIssue&) = default;
};

struct AccessibilityTruncation {
  AccessibilityTruncationReason reason = AccessibilityTruncationReason::nodeLimit;
  std::optional<std::int64_t> nodeID;
  std::optional<std::string> attribute;
  std::optional<std::int64_t> omittedCount;  ///< elements or characters, when known

  friend bool operator==(const AccessibilityTruncation&, const AccessibilityTruncation&) = default;
};

/// The raw result of one accessibility capture of a frozen window.
///
/// Invariants of a captured one: ids are 0 … nodeCount − 1; the root has id 0, no parent and depth 0; every other node
/// stands one level below the node that its `parentID` names, and that node lists it.
struct AccessibilitySnapshot {
  static constexpr std::int64_t currentSchemaVersion = 2;

  std::int64_t schemaVersion = currentSchemaVersion;
  Date capturedAt;
  std::int32_t targetProcessIdentifier = 0;
  AccessibilityRootKind rootKind = AccessibilityRootKind::focusedWindow;
  std::int64_t rootID = 0;
  std::optional<std::int64_t> focusedNodeID;
  std::vector<AccessibilityNode> nodes;  ///< ascending by id
  std::int64_t nodeCount = 0;
  std::int64_t characterCount = 0;  ///< user-perceived characters of all retained text
  bool wasTruncated = false;
  std::vector<AccessibilityTruncation> truncations;  ///< in the order met
  std::vector<AccessibilityCaptureIssue> issues;     ///< in the order met
  std::vector<std::string> warnings;

  /// Sorts the nodes by id (stable) and derives `nodeCount` and `wasTruncated` from the fields they follow from. Every
  /// maker of a snapshot ends with it; decoding keeps what the file says.
  void deriveFields();

  friend bool operator==(const AccessibilitySnapshot&, const AccessibilitySnapshot&) = default;
};

template <>
struct EnumerationNames<AccessibilityRootKind> {
  static constexpr std::array<std::string_view, 3> names = {"focusedWindow", "mainWindow", "application"};
};

template <>
struct EnumerationNames<AccessibilityIssueSeverity> {
  static constexpr std::array<std::string_view, 2> names = {"information", "warning"};
};

template <>
struct EnumerationNames<AccessibilityTruncationReason> {
  static constexpr std::array<std::string_view, 4> names = {"nodeLimit", "depthLimit", "characterLimit",
                                                            "attributeValueLimit"};
};

template <>
struct JsonFields<AccessibilityAttribute> {
  using R = AccessibilityAttribute;
  static constexpr auto table = std::tuple{jsonField("name", &R::name), jsonField("value", &R::value)};
};

template <>
struct JsonFields<AccessibilityNode> {
  using R = AccessibilityNode;
  static constexpr auto table = std::tuple{jsonField("id", &R::id),
                                           jsonField("parentID", &R::parentID),
                                           jsonField("childIDs", &R::childIDs),
                                           jsonField("depth", &R::depth),
                                           jsonField("role", &R::role),
                                           jsonField("subrole", &R::subrole),
                                           jsonField("frame", &R::frame),
                                           jsonField("isProtected", &R::isProtected),
                                           jsonField("attributes", &R::attributes)};
};

template <>
struct JsonFields<AccessibilityCaptureIssue> {
  using R = AccessibilityCaptureIssue;
  static constexpr auto table =
      std::tuple{jsonField("severity", &R::severity), jsonField("code", &R::code), jsonField("message", &R::message),
                 jsonField("nodeID", &R::nodeID), jsonField("attribute", &R::attribute)};
};

template <>
struct JsonFields<AccessibilityTruncation> {
  using R = AccessibilityTruncation;
  static constexpr auto table =
      std::tuple{jsonField("reason", &R::reason), jsonField("nodeID", &R::nodeID),
                 jsonField("attribute", &R::attribute), jsonField("omittedCount", &R::omittedCount)};
};

template <>
struct JsonFields<AccessibilitySnapshot> {
  using R = AccessibilitySnapshot;
  static constexpr auto table = std::tuple{jsonField("schemaVersion", &R::schemaVersion),
                                           jsonField("capturedAt", &R::capturedAt),
                                           jsonField("targetProcessIdentifier", &R::targetProcessIdentifier),
                                           jsonField("rootKind", &R::rootKind),
                                           jsonField("rootID", &R::rootID),
                                           jsonField("focusedNodeID", &R::focusedNodeID),
                                           jsonField("nodes", &R::nodes),
                                           jsonField("nodeCount", &R::nodeCount),
                                           jsonField("characterCount", &R::characterCount),
                                           jsonField("wasTruncated", &R::wasTruncated),
                                           jsonField("truncations", &R::truncations),
                                           jsonField("issues", &R::issues),
                                           jsonField("warnings", &R::warnings)};
};

}  // namespace quillo
