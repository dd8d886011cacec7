#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceElement.h"
#include "QuilloCore/Support/Date.h"
#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

/// How much of the raw capture an observation represents. The three category counts are absent in observations that
/// were written before they existed.
struct InterfaceObservationCompleteness {
  std::int64_t sourceNodeCount = 0;
  std::int64_t retainedElementCount = 0;
  std::int64_t prunedNodeCount = 0;
  std::int64_t ignoredGraphReferenceCount = 0;  ///< the sum of the three below
  std::optional<std::int64_t> sharedGraphReferenceCount;
  std::optional<std::int64_t> cyclicGraphReferenceCount;
  std::optional<std::int64_t> unavailableGraphReferenceCount;
  bool wasSourceTruncated = false;
  std::vector<AccessibilityTruncation> sourceTruncations;
  std::vector<AccessibilityCaptureIssue> sourceIssues;
  std::vector<std::string> warnings;

  friend bool operator==(const InterfaceObservationCompleteness&, const InterfaceObservationCompleteness&) = default;
};

/// The semantic picture of one captured window.
///
/// Invariants that the normalizer establishes and every reader relies on:
///  1. `elements` is in pre-order; children stand in the order of their parent's `childIDs`, which is source order.
///  2. `elements[0]` is the root: its id is `rootElementID`, it has no parent, its depth is 0.
///  3. Ids are unique; every child id names an element whose `parentID` is the listing element and whose depth is one
///     more.
///  4. Each source node occurs at most once.
///  5. `ignoredGraphReferenceCount` is the sum of the three category counts when they are present.
struct InterfaceObservation {
  static constexpr std::int64_t currentSchemaVersion = 4;

  std::int64_t schemaVersion = currentSchemaVersion;
  Date observedAt;
  std::int32_t targetProcessIdentifier = 0;
  AccessibilityRootKind sourceRootKind = AccessibilityRootKind::focusedWindow;
  std::string rootElementID;
  std::vector<InterfaceElement> elements;
  InterfaceObservationCompleteness completeness;

  /// The first element of that id, or null; a linear scan.
  const InterfaceElement* element(std::string_view id) const;

  friend bool operator==(const InterfaceObservation&, const InterfaceObservation&) = default;
};

template <>
struct JsonFields<InterfaceObservationCompleteness> {
  using R = InterfaceObservationCompleteness;
  static constexpr auto table =
      std::tuple{jsonField("sourceNodeCount", &R::sourceNodeCount),
                 jsonField("retainedElementCount", &R::retainedElementCount),
                 jsonField("prunedNodeCount", &R::prunedNodeCount),
                 jsonField("ignoredGraphReferenceCount", &R::ignoredGraphReferenceCount),
                 jsonField("sharedGraphReferenceCount", &R::sharedGraphReferenceCount),
                 jsonField("cyclicGraphReferenceCount", &R::cyclicGraphReferenceCount),
                 jsonField("unavailableGraphReferenceCount", &R::unavailableGraphReferenceCount),
                 jsonField("wasSourceTruncated", &R::wasSourceTruncated),
                 jsonField("sourceTruncations", &R::sourceTruncations),
                 jsonField("sourceIssues", &R::sourceIssues),
                 jsonField("warnings", &R::warnings)};
};

template <>
struct JsonFields<InterfaceObservation> {
  using R = InterfaceObservation;
  static constexpr auto table = std::tuple{jsonField("schemaVersion", &R::schemaVersion),
                                           jsonField("observedAt", &R::observedAt),
                                           jsonField("targetProcessIdentifier", &R::targetProcessIdentifier),
                                           jsonField("sourceRootKind", &R::sourceRootKind),
                                           jsonField("rootElementID", &R::rootElementID),
                                           jsonField("elements", &R::elements),
                                           jsonField("completeness", &R::completeness)};
};

}  // namespace quillo
