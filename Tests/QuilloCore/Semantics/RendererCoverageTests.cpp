#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "QuilloCore/Semantics/CoverageSection.h"
#include "QuilloCore/Semantics/LimitSentence.h"
#include "QuilloCore/Semantics/RenderPlan.h"
#include "QuilloCore/Semantics/TextLines.h"

namespace quillo::test {
namespace {

std::string coverage(const InterfaceObservationCompleteness& completeness, const RenderPlan& plan) {
  TextLines lines;
  appendCoverage(completeness, plan, lines);
  return lines.joined();
}

RenderPlan emptyPlan() {
  return {8, RenderingScope{.includedElements = ElementIndexSet(8),
                            .omittedOutOfScopeElementCount = 0,
                            .omittedNavigationElementCount = 0,
                            .omittedNavigationElements = {}}};
}

void fill(ElementIndexSet& set, ElementIndex count) {
  for (ElementIndex i = 0; i < count; ++i) set.insert(i);
}

/// Every set of the plan and every count of the observation with the same number.
std::string everySentence(ElementIndex count) {
  RenderPlan plan = emptyPlan();
  plan.scope.omittedOutOfScopeElementCount = count;
  plan.scope.omittedNavigationElementCount = count;
  plan.mergedTextRunCount = count;
  for (ElementIndexSet* set : {&plan.coveredTextElementIDs, &plan.compoundEditableControlIDs, &plan.emptyTabularRowIDs,
                               &plan.scopeSuppressedAggregateContentIDs, &plan.partiallyCoveredAggregateContentIDs,
                               &plan.suppressedNestedContentIDs}) {
    fill(*set, count);
  }
  fill(plan.suppressedAggregateContentIDs, count + count);
  InterfaceObservationCompleteness completeness;
  completeness.retainedElementCount = count;
  completeness.prunedNodeCount = count;
  completeness.ignoredGraphReferenceCount = std::int64_t{3} * count;
  completeness.sharedGraphReferenceCount = count;
  completeness.cyclicGraphReferenceCount = count;
  completeness.unavailableGraphReferenceCount = count;
  return coverage(completeness, plan);
}

TEST(RendererCoverage, countsNothingWhenThereIsNothingToCount) {
  EXPECT_EQ(everySentence(0), R"(
## Coverage
- 0 semantic interface elements are mapped.
- No Accessibility safety-limit truncation was reported. This does not guarantee that the app exposed every interface or visual detail.)");
}

/// A sentence behind its count, and its plural when that is another.
struct CountedSentence {
  std::string_view one;
  std::string_view several = one;
};

TEST(RendererCoverage, countsEverySetInOrderAndUsesThePluralForSeveral) {
  const std::vector<CountedSentence> sentences = {
      {"semantic interface elements are mapped."},
      {"interface elements outside the focused web content and its source path were omitted from this default view."},
      {"offscreen or zero-area navigation elements were omitted from this default view; visible navigation and the "
       "full main document remain represented."},
      {"decorative or empty elements were omitted without removing their meaningful descendants."},
      {"shared interface reference pointed to elements already mapped once.",
       "shared interface references pointed to elements already mapped once."},
      {"cyclic interface reference was stopped to keep the observation finite.",
       "cyclic interface references were stopped to keep the observation finite."},
      {"interface reference pointed to elements unavailable in the captured graph.",
       "interface references pointed to elements unavailable in the captured graph."},
      {"descendant text elements were consolidated under authoritative document or editor content."},
      {"adjacent editable label was consolidated with its exactly matching control.",
       "adjacent editable labels were consolidated with their exactly matching controls."},
      {"adjacent text run was consolidated without changing source order.",
       "adjacent text runs were consolidated without changing source order."},
      {"tabular row record exposed no cell text or independent state and was omitted from this prose; source row "
       "counts and truncation evidence remain recorded.",
       "tabular row records exposed no cell text or independent state and were omitted from this prose; source row "
       "counts and truncation evidence remain recorded."},
      {"aggregate web content values that also contained omitted offscreen navigation were not emitted; scoped "
       "descendants and document/editor owners provide the default context."},
      {"aggregate document text values whose complete normalized token sequence is represented by rendered structured "
       "descendants were not repeated."},
      {"partially represented aggregate document text values were reduced to source-ordered, position-anchored spans "
       "after normalized token comparison; matched structured descendant text was not replayed."},
      {"nested document or editor text values were represented by a maximal-coverage authoritative owner."},
  };
  std::string one = "\n## Coverage\n";
  std::string three = one;
  for (const CountedSentence& sentence : sentences) {
    one.append("- 1 ").append(sentence.one) += '\n';
    three.append("- 3 ").append(sentence.several) += '\n';
  }
  const std::string end =
      "- No Accessibility safety-limit truncation was reported. This does not guarantee that the app exposed every "
      "interface or visual detail.";
  EXPECT_EQ(everySentence(1), one + end);
  EXPECT_EQ(everySentence(3), three + end);
}

TEST(RendererCoverage, tellsOldObservationsFromNewOnes) {
  InterfaceObservationCompleteness completeness;
  completeness.ignoredGraphReferenceCount = 3;
  const std::string sentence =
      "- 3 graph references from an older observation were consolidated; their exact category was not recorded.\n";
  EXPECT_NE(coverage(completeness, emptyPlan()).find(sentence), std::string::npos);
  completeness.sharedGraphReferenceCount = 0;
  EXPECT_EQ(coverage(completeness, emptyPlan()).find("graph references"), std::string::npos);
}

TEST(RendererCoverage, endsWithLimitsIssuesAndWarnings) {
  using enum AccessibilityTruncationReason;
  InterfaceObservationCompleteness completeness;
  completeness.wasSourceTruncated = true;
  const auto record = [](AccessibilityTruncationReason reason, std::optional<std::int64_t> omitted) {
    return AccessibilityTruncation{.reason = reason, .nodeID = {}, .attribute = {}, .omittedCount = omitted};
  };
  completeness.sourceTruncations = {record(attributeValueLimit, 0),
                                    record(nodeLimit, 12),
                                    record(characterLimit, {}),
                                    record(nodeLimit, {}),
                                    record(depthLimit, 1),
                                    record(attributeValueLimit, -5),
                                    record(characterLimit, INT64_MIN)};
  completeness.sourceIssues.emplace_back().message = "Reading \"AXValue\" failed\n## Coverage";
  completeness.warnings = {"The window moved."};
  EXPECT_EQ(coverage(completeness, emptyPlan()), R"(
## Coverage
- 0 semantic interface elements are mapped.
- The observation is partial because the source capture reached a safety limit.
- The element safety limit was reached at 2 interface points. At least 12 immediate frontier references were omitted; some counts were unavailable.
- The depth safety limit was reached at 1 interface point. 1 immediate frontier reference was omitted.
- The capture-wide text safety limit was reached at 2 interface points. The omitted count was unavailable.
- The per-value text safety limit was reached at 2 interface points. 0 text units were omitted.
- Capture note: Reading "AXValue" failed ## Coverage
- Capture note: The window moved.)");
  EXPECT_EQ(
      limitSentence(characterLimit, std::vector{record(characterLimit, 1), record(characterLimit, {})}),
      "The capture-wide text safety limit was reached at 2 interface points. At least 1 text unit was omitted; some "
      "counts were unavailable.");
  EXPECT_EQ(limitSentence(nodeLimit, std::vector{record(nodeLimit, INT64_MAX), record(nodeLimit, 7)}),
            "The element safety limit was reached at 2 interface points. 9223372036854775807 immediate frontier "
            "references were omitted.");
}

}  // namespace
}  // namespace quillo::test
