#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "OffscreenApplication.h"
#include "QuilloApp/Inspector/CoverageSummary.h"
#include "Tests/Support/ObservationBuilder.h"

namespace quillo::test {
namespace {

std::string told(const InterfaceObservation& observed) {
  const CoverageSummary summary = describeCoverage(observed, QLocale(QLocale::English, QLocale::UnitedStates));
  return (summary.isPartial ? "! " : "") + summary.headline.toStdString() + "\n" +
         summary.details.join(QLatin1Char('\n')).toStdString();
}

/// The plurals are a translation.
class CoverageSummaryTest : public testing::Test {
  OffscreenApplication application_;
};

AccessibilityCaptureIssue note(std::string message) {
  AccessibilityCaptureIssue issue;
  issue.message = std::move(message);
  return issue;
}

TEST_F(CoverageSummaryTest, saysWhatWasCutWhyAndHowMany) {
  InterfaceObservation observed = observation("window 'Mail'\n  textField 'Password' [protected]\n  text 'Hello'");
  EXPECT_EQ(
      "Read without reaching a limit: 3 elements, 1 protected\n"
      "1 element protected, such as passwords: no text of theirs was read.",
      told(observed));

  using enum AccessibilityTruncationReason;
  auto& completeness = observed.completeness;
  completeness.prunedNodeCount = 1234;
  completeness.wasSourceTruncated = true;
  completeness.sourceTruncations = {{nodeLimit, {}, {}, 1500},
                                    {depthLimit, {}, {}, 1},
                                    {depthLimit, {}, {}, {}},
                                    {characterLimit, {}, {}, {}},
                                    {attributeValueLimit, {}, {}, 70'000}};
  completeness.warnings = {"The window moved."};
  for (int count = 0; count < 3; ++count) completeness.sourceIssues.push_back(note("A value\ncould not be read."));
  EXPECT_EQ(
      "! Partly read: 3 elements. 1,500 elements left out: the window has more elements than a capture reads.\n"
      "1,500 elements left out: the window has more elements than a capture reads.\n"
      "At least 1 element left out in 2 places: nested deeper than a capture reads.\n"
      "Some text left out in 1 place: the window has more text than a capture keeps.\n"
      "70,000 characters left out in 1 place: a single text was longer than a capture keeps.\n"
      "1 element protected, such as passwords: no text of theirs was read.\n"
      "1,234 elements left out on purpose: decorative or empty.\n"
      "Note: The window moved.\n"
      "Note: A value could not be read. (3 times)",
      told(observed));
}

TEST_F(CoverageSummaryTest, staysShortWhateverWasNoted) {
  InterfaceObservation observed = observation("window 'Mail'");
  for (int count = 0; count < 5000; ++count)
    observed.completeness.sourceIssues.push_back(note("Note " + std::to_string(count) + std::string(1000, 'x')));
  const CoverageSummary summary = describeCoverage(observed, QLocale::c());
  EXPECT_EQ(21, summary.details.size());
  EXPECT_EQ("4980 more notes.", summary.details.back());
  EXPECT_LT(summary.details.front().size(), 400);
}

}  // namespace
}  // namespace quillo::test
