#include "QuilloCore/Semantics/CoverageSection.h"

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "QuilloCore/Semantics/LimitSentence.h"
#include "QuilloCore/Semantics/PrintableText.h"

namespace quillo {
namespace {

constexpr std::string_view heading = "## Coverage";
constexpr std::string_view partialSentence =
    "- The observation is partial because the source capture reached a safety limit.";

/// Sentences that begin with a count, printed when it is at least one.
class CountedSentences {
 public:
  explicit CountedSentences(TextLines& lines) : lines_(lines) {}

  void add(std::int64_t count, std::string_view sentence) { add(count, sentence, sentence); }

  void add(std::int64_t count, std::string_view one, std::string_view several) {
    if (count >= 1) lines_.add(fmt::format("- {} {}", count, count == 1 ? one : several));
  }

  void addSize(const ElementIndexSet& set, std::string_view sentence) { add(asCount(set.size()), sentence); }

  void addSize(const ElementIndexSet& set, std::string_view one, std::string_view several) {
    add(asCount(set.size()), one, several);
  }

 private:
  static std::int64_t asCount(std::size_t size) { return static_cast<std::int64_t>(size); }

  TextLines& lines_;
};

void appendGraphReferences(const InterfaceObservationCompleteness& completeness, CountedSentences& sentences) {
  const auto& [shared, cyclic, unavailable] =
      std::tie(completeness.sharedGraphReferenceCount, completeness.cyclicGraphReferenceCount,
               completeness.unavailableGraphReferenceCount);
  sentences.add(shared.value_or(0), "shared interface reference pointed to elements already mapped once.",
                "shared interface references pointed to elements already mapped once.");
  sentences.add(cyclic.value_or(0), "cyclic interface reference was stopped to keep the observation finite.",
                "cyclic interface references were stopped to keep the observation finite.");
  sentences.add(unavailable.value_or(0), "interface reference pointed to elements unavailable in the captured graph.",
                "interface references pointed to elements unavailable in the captured graph.");
  if (shared || cyclic || unavailable) return;
  sentences.add(completeness.ignoredGraphReferenceCount,
                "graph references from an older observation were consolidated; their exact category was not recorded.");
}

void appendConsolidations(const RenderPlan& plan, CountedSentences& sentences) {
  sentences.addSize(plan.coveredTextElementIDs,
                    "descendant text elements were consolidated under authoritative document or editor content.");
  sentences.addSize(plan.compoundEditableControlIDs,
                    "adjacent editable label was consolidated with its exactly matching control.",
                    "adjacent editable labels were consolidated with their exactly matching controls.");
  sentences.add(plan.mergedTextRunCount, "adjacent text run was consolidated without changing source order.",
                "adjacent text runs were consolidated without changing source order.");
  sentences.addSize(plan.emptyTabularRowIDs,
                    "tabular row record exposed no cell text or independent state and was omitted from this prose; "
                    "source row counts and truncation evidence remain recorded.",
                    "tabular row records exposed no cell text or independent state and were omitted from this prose; "
                    "source row counts and truncation evidence remain recorded.");
  sentences.addSize(plan.scopeSuppressedAggregateContentIDs,
                    "aggregate web content values that also contained omitted offscreen navigation were not emitted; "
                    "scoped descendants and document/editor owners provide the default context.");
  // Every value suppressed by the scope also stands among the suppressed ones.
  sentences.add(static_cast<std::int64_t>(plan.suppressedAggregateContentIDs.size()) -
                    static_cast<std::int64_t>(plan.scopeSuppressedAggregateContentIDs.size()),
                "aggregate document text values whose complete normalized token sequence is represented by rendered "
                "structured descendants were not repeated.");
  sentences.addSize(plan.partiallyCoveredAggregateContentIDs,
                    "partially represented aggregate document text values were reduced to source-ordered, "
                    "position-anchored spans after normalized token comparison; matched structured descendant text was "
                    "not replayed.");
  sentences.addSize(
      plan.suppressedNestedContentIDs,
      "nested document or editor text values were represented by a maximal-coverage authoritative owner.");
}

void appendLimits(const InterfaceObservationCompleteness& completeness, TextLines& lines) {
  lines.add(completeness.wasSourceTruncated
                ? std::string(partialSentence)
                : "- No Accessibility safety-limit truncation was reported. This does not guarantee that the app "
                  "exposed every interface or visual detail.");
  using enum AccessibilityTruncationReason;
  for (const auto reason : {nodeLimit, depthLimit, characterLimit, attributeValueLimit}) {
    const std::string sentence = limitSentence(reason, completeness.sourceTruncations);
    if (!sentence.empty()) lines.add("- " + sentence);
  }
}

}  // namespace

void appendCoverage(const InterfaceObservationCompleteness& completeness, const RenderPlan& plan, TextLines& lines) {
  lines.add("");
  lines.add(std::string(heading));
  lines.add(fmt::format("- {} semantic interface elements are mapped.", completeness.retainedElementCount));
  CountedSentences sentences(lines);
  sentences.add(plan.scope.omittedOutOfScopeElementCount,
                "interface elements outside the focused web content and its source path were omitted from this default "
                "view.");
  sentences.add(
      plan.scope.omittedNavigationElementCount,
      "offscreen or zero-area navigation elements were omitted from this default view; visible navigation and "
      "the full main document remain represented.");
  sentences.add(completeness.prunedNodeCount,
                "decorative or empty elements were omitted without removing their meaningful descendants.");
  appendGraphReferences(completeness, sentences);
  appendConsolidations(plan, sentences);
  appendLimits(completeness, lines);
  for (const AccessibilityCaptureIssue& issue : completeness.sourceIssues) {
    lines.add("- Capture note: " + onOneLine(issue.message));
  }
  for (const std::string& warning : completeness.warnings) lines.add("- Capture note: " + onOneLine(warning));
}

bool saysPartialObservation(std::string_view contextText) {
  // The section is the last one, and no captured text stands at the beginning of a line.
  // Looking forward for it is many times faster than the library's looking back.
  std::size_t section = std::string_view::npos;
  for (std::size_t next = contextText.find(heading); next != std::string_view::npos;
       next = contextText.find(heading, next + heading.size())) {
    section = next;
  }
  return section != std::string_view::npos && contextText.substr(section).contains(partialSentence);
}

}  // namespace quillo
