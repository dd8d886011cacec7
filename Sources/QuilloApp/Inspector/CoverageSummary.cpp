#include "QuilloApp/Inspector/CoverageSummary.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloApp/Inspector/LedgerWords.h"
#include "QuilloApp/Interface/Translations.h"

namespace quillo {
namespace {

constexpr std::size_t mostNotes = 20;

/// Words of the summary; no instance of it exists.
struct Coverage {
  Q_DECLARE_TR_FUNCTIONS(quillo::Coverage)
};

struct Cut {
  std::int64_t places = 0;
  std::int64_t omitted = 0;  ///< of the known counts
  bool areAllKnown = true;
};

Cut cutBy(AccessibilityTruncationReason reason, const std::vector<AccessibilityTruncation>& truncations) {
  Cut cut;
  for (const AccessibilityTruncation& truncation : truncations) {
    if (truncation.reason != reason) continue;
    ++cut.places;
    cut.areAllKnown = cut.areAllKnown && truncation.omittedCount.has_value();
    const std::int64_t count = std::max<std::int64_t>(truncation.omittedCount.value_or(0), 0);
    cut.omitted += std::min(count, std::numeric_limits<std::int64_t>::max() - cut.omitted);
  }
  return cut;
}

class Sentences {
 public:
  explicit Sentences(const QLocale& locale) : locale_(locale) {}

  QString number(std::int64_t count) const { return locale_.toString(static_cast<qlonglong>(count)); }

  QString elements(std::int64_t count) const {
    return Coverage::tr("%1 elements", nullptr, pluralNumber(count)).arg(number(count));
  }

  QString characters(std::int64_t count) const {
    return Coverage::tr("%1 characters", nullptr, pluralNumber(count)).arg(number(count));
  }

  QString amount(const Cut& cut, bool isText) const {
    if (cut.omitted == 0) return isText ? Coverage::tr("Some text") : Coverage::tr("Some elements");
    const QString counted = isText ? characters(cut.omitted) : elements(cut.omitted);
    return cut.areAllKnown ? counted : Coverage::tr("At least %1").arg(counted);
  }

  QString places(const Cut& cut) const {
    return Coverage::tr("in %1 places", nullptr, pluralNumber(cut.places)).arg(number(cut.places));
  }

  /// Empty when that limit cut nothing.
  QString cut(AccessibilityTruncationReason reason, const Cut& cut) const {
    if (cut.places == 0) return {};
    switch (reason) {
      case AccessibilityTruncationReason::nodeLimit:
        return Coverage::tr("%1 left out: the window has more elements than a capture reads.").arg(amount(cut, false));
      case AccessibilityTruncationReason::depthLimit:
        return Coverage::tr("%1 left out %2: nested deeper than a capture reads.").arg(amount(cut, false), places(cut));
      case AccessibilityTruncationReason::characterLimit:
        return Coverage::tr("%1 left out %2: the window has more text than a capture keeps.")
            .arg(amount(cut, true), places(cut));
      case AccessibilityTruncationReason::attributeValueLimit:
        return Coverage::tr("%1 left out %2: a single text was longer than a capture keeps.")
            .arg(amount(cut, true), places(cut));
    }
    return {};
  }

 private:
  const QLocale& locale_;
};

/// Each note once, in the order met, with how often it was.
QStringList notes(const InterfaceObservationCompleteness& completeness, const QLocale& locale) {
  std::vector<std::string_view> order;
  std::unordered_map<std::string_view, std::int64_t> counts;
  const auto note = [&](std::string_view message) {
    if (counts[message]++ == 0) order.push_back(message);
  };
  for (const std::string& warning : completeness.warnings) note(warning);
  for (const AccessibilityCaptureIssue& issue : completeness.sourceIssues) note(issue.message);
  QStringList lines;
  for (const std::string_view message : order) {
    if (lines.size() == static_cast<qsizetype>(mostNotes)) {
      const auto rest = static_cast<qulonglong>(order.size() - mostNotes);
      lines << Coverage::tr("%1 more notes.", nullptr, pluralNumber(rest)).arg(locale.toString(rest));
      break;
    }
    const QString text = Coverage::tr("Note: %1").arg(shownText(message));
    const std::int64_t count = counts[message];
    lines << (count == 1 ? text
                         : Coverage::tr("%1 (%2 times)", nullptr, pluralNumber(count))
                               .arg(text, locale.toString(static_cast<qlonglong>(count))));
  }
  return lines;
}

}  // namespace

CoverageSummary describeCoverage(const InterfaceObservation& observation, const QLocale& locale) {
  const InterfaceObservationCompleteness& completeness = observation.completeness;
  const Sentences sentences(locale);
  CoverageSummary summary;
  summary.isPartial = completeness.wasSourceTruncated;
  const auto retained = static_cast<std::int64_t>(observation.elements.size());
  summary.headline = summary.isPartial
                         ? Coverage::tr("Partly read: %1").arg(sentences.elements(retained))
                         : Coverage::tr("Read without reaching a limit: %1").arg(sentences.elements(retained));
  using enum AccessibilityTruncationReason;
  for (const auto reason : {nodeLimit, depthLimit, characterLimit, attributeValueLimit}) {
    const QString sentence = sentences.cut(reason, cutBy(reason, completeness.sourceTruncations));
    if (!sentence.isEmpty()) summary.details << sentence;
  }
  if (summary.isPartial && !summary.details.isEmpty())
    summary.headline += QStringLiteral(". ") + summary.details.front();
  const auto protectedCount = std::ranges::count(observation.elements, true, &InterfaceElement::isProtected);
  if (protectedCount > 0) {
    const QString counted = sentences.elements(protectedCount);
    if (!summary.isPartial)
      summary.headline +=
          Coverage::tr(", %1 protected", nullptr, pluralNumber(protectedCount)).arg(sentences.number(protectedCount));
    summary.details << Coverage::tr("%1 protected, such as passwords: no text of theirs was read.").arg(counted);
  }
  if (completeness.prunedNodeCount > 0)
    summary.details << Coverage::tr("%1 left out on purpose: decorative or empty.")
                           .arg(sentences.elements(completeness.prunedNodeCount));
  summary.details << notes(completeness, locale);
  return summary;
}

}  // namespace quillo
