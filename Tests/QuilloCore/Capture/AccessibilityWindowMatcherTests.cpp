#include "QuilloCore/Capture/AccessibilityWindowMatcher.h"

#include <gtest/gtest.h>

#include "QuilloCore/Capture/WindowIdentityCorrelation.h"

namespace quillo::test {
namespace {

using Candidates = std::vector<AccessibilityWindowCandidate>;

constexpr ArtifactRect frozenFrame{100, 100, 640, 480};

WindowCaptureTarget target() {
  WindowCaptureTarget result;
  result.applicationName = "Mail";
  result.windowID = 30;
  result.windowFrame = frozenFrame;
  result.windowTitle = "Inbox";
  return result;
}

AccessibilityWindowCandidate numbered(std::uint32_t number) {
  return {0, number, std::nullopt, std::nullopt};
}

AccessibilityWindowCandidate framed(ArtifactRect frame, std::optional<std::string> title = "Inbox") {
  return {0, std::nullopt, frame, std::move(title)};
}

/// "1: note" for the match of candidate 1, or the explanation of the failure.
std::string outcome(const WindowCaptureTarget& frozen, Candidates candidates) {
  for (std::size_t i = 0; i < candidates.size(); ++i) candidates[i].index = static_cast<std::int64_t>(i);
  const auto match = AccessibilityWindowMatcher::match(frozen, candidates);
  if (!match) return match.error().explanation();
  return std::to_string(match->candidate.index) + (match->note ? ": " + *match->note : "");
}

TEST(AccessibilityWindowMatcher, theNumberDecidesWhereThereIsOne) {
  EXPECT_EQ(outcome(target(), {}), "The application exposed no Accessibility windows.");
  EXPECT_EQ(outcome(target(), {framed(frozenFrame), numbered(30)}), "1");
  EXPECT_EQ(outcome(target(), {numbered(30), numbered(30)}),
            "Multiple Accessibility windows claimed WindowServer ID 30.");
  EXPECT_EQ(outcome(target(), {numbered(12), numbered(9)}),
            "Accessibility exposed window IDs 9, 12, but not frozen window 30.");
}

TEST(AccessibilityWindowMatcher, aSingleFrameIsConfirmedByItsTitle) {
  const std::string prefix = "0: The target window did not expose AXWindowNumber; Quillo matched frozen window 30 ";
  const auto note = [&](std::optional<std::string> frozen, std::optional<std::string> exposed) {
    auto window = target();
    window.windowTitle = std::move(frozen);
    return outcome(window, {framed({101.5, 98.5, 642, 478}, std::move(exposed)), numbered(9)});
  };
  const std::string exact = prefix + "using its frame and title.";
  EXPECT_EQ(note("Inbox", "Inbox"), exact);
  EXPECT_EQ(note("Inbox ", "\u200E Inbox"), exact) << "white space and invisible marks";
  EXPECT_EQ(note("a  b", "a\u00A0b"), exact);
  const std::string decorated = prefix + "using its frame and an equivalent application-decorated title.";
  EXPECT_EQ(note("Inbox \u2014 Mail", "Inbox"), decorated);
  EXPECT_EQ(note("Inbox", "mail: Inbox"), decorated);
  EXPECT_EQ(note("Inbox - MAIL", "Inbox"), decorated);
  const std::string unique =
      "0: The target window did not expose AXWindowNumber or comparable title metadata; Quillo matched frozen window "
      "30 using its unique frame.";
  EXPECT_EQ(note("Inbox", std::nullopt), unique);
  EXPECT_EQ(note(std::nullopt, "Inbox"), unique);
  EXPECT_EQ(note(" ", "Inbox"), unique);
  const std::string differing =
      prefix + "using its unique frame despite differing WindowServer and Accessibility titles.";
  EXPECT_EQ(note("Inbox", "Outbox"), differing);
  EXPECT_EQ(note("Inbox - Other", "Inbox"), differing) << "another application's name";
  EXPECT_EQ(note("InboxMail", "Inbox"), differing) << "no separator";
}

TEST(AccessibilityWindowMatcher, aFrameWhoseTitleStandsElsewhereIsRefused) {
  EXPECT_EQ(outcome(target(), {framed(frozenFrame, "Outbox"), framed({0, 0, 10, 10}, "Inbox"), framed({}, " ")}),
            "The frame-matched Accessibility window did not match frozen title \"Inbox\" (exposed: Outbox, Inbox).");
  EXPECT_EQ(AccessibilityWindowMatchFailure(AccessibilityWindowMatchFailure::TitleDiffers{"Inbox", {}}).explanation(),
            "The frame-matched Accessibility window did not match frozen title \"Inbox\" (exposed: no title).");
}

TEST(AccessibilityWindowMatcher, framesAgreeWithinTwoPoints) {
  const std::string nothing =
      "No unnumbered Accessibility window matched the frozen frame or uniquely matched its dimensions and title across "
      "coordinate spaces.";
  for (const double offset : {1.5, 2.0, -2.0}) {
    EXPECT_EQ(outcome(target(), {framed({100 + offset, 100, 640, 480})})[0], '0');
    EXPECT_EQ(outcome(target(), {framed({100, 100, 640, 480 + offset})})[0], '0');
  }
  EXPECT_EQ(outcome(target(), {framed({102.5, 100, 640, 480}, "Outbox")}), nothing);
  EXPECT_EQ(outcome(target(), {framed({100, 100, 640, 482.5})}), nothing);
  EXPECT_EQ(outcome(target(), {framed(frozenFrame), framed(frozenFrame, "Outbox")}),
            "2 unnumbered Accessibility windows matched the frozen frame, so Quillo could not identify one safely.");

  auto decorated = target();
  decorated.equivalentFrames = {{99, 80, 642, 501}, {110, 110, 620, 460}};
  EXPECT_EQ(outcome(decorated, {framed({98, 79, 642, 502})})[0], '0') << "the window manager's frame";
  EXPECT_EQ(outcome(decorated, {framed({0, 0, 620, 460})}),
            "0: The target window did not expose AXWindowNumber; Quillo matched frozen window 30 using its unique "
            "dimensions and equivalent title across translated Accessibility and WindowServer coordinate spaces.");
}

TEST(AccessibilityWindowMatcher, aTranslatedFrameNeedsTheTitle) {
  const ArtifactRect translated{0, 0, 640, 480};
  EXPECT_EQ(outcome(target(), {framed(translated, "Outbox"), framed(translated, "Inbox - Mail")})[0], '1');
  EXPECT_EQ(outcome(target(), {framed(translated), framed({5, 5, 641, 480})}),
            "2 unnumbered Accessibility windows matched the frozen dimensions and title across coordinate spaces, so "
            "Quillo could not identify one safely.");
  EXPECT_EQ(outcome(target(), {framed(translated, std::nullopt)})[0], 'N');
}

TEST(WindowIdentityCorrelation, titlesCorrelateWhenOneDecoratesTheOther) {
  const auto correlate = WindowIdentityCorrelation::titlesCorrelate;
  EXPECT_TRUE(correlate("Inbox", "\n Inbox "));
  EXPECT_TRUE(correlate("Inbox", "Inbox \u2013 Mail"));
  EXPECT_TRUE(correlate("Mail: Inbox", "Inbox"));
  EXPECT_TRUE(correlate("ab", "ab"));
  EXPECT_FALSE(correlate("ab", "ab - Mail")) << "too short to tell";
  EXPECT_FALSE(correlate("Inbox", "Inbox2"));
  EXPECT_FALSE(correlate("Inbox", std::nullopt));
  EXPECT_FALSE(correlate(" ", " "));
}

}  // namespace
}  // namespace quillo::test
