#include "QuilloCore/Capture/AccessibilityTreeWalk.h"

#include <limits>

#include "CaptureFixture.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo::test {
namespace {

using TreeWalk = CaptureTest;

TEST_F(TreeWalk, readsATreeBreadthFirst) {
  const auto snapshot = capture(R"(
    window 'Inbox' number=7 subrole=AXStandardWindow AXUnknownToUs=x
      toolbar
        button 'Reply' frame=10,10,350,280 actions=AXPress,AXShowMenu
        button 'Delete' [disabled]
      text value='Dear all' [focused]
  )");
  EXPECT_EQ(describe(snapshot), R"(0 AXWindow/AXStandardWindow -> 1 2 AXTitle="Inbox"
  1 AXToolbar -> 3 4
  2 AXStaticText AXFocused=true AXValue="Dear all"
    3 AXButton (10,10,350,280) AXActions=[AXPress,AXShowMenu] AXTitle="Reply"
    4 AXButton AXEnabled=false AXTitle="Delete"
)");
  EXPECT_EQ(findViolation(snapshot), "");
  EXPECT_EQ(snapshot.focusedNodeID, 2);
  EXPECT_EQ(snapshot.rootKind, AccessibilityRootKind::focusedWindow);
  EXPECT_EQ(snapshot.capturedAt, wallClock.present);
  EXPECT_EQ(snapshot.characterCount, 5 + 8 + 5 + 7 + 10 + 6);
}

TEST_F(TreeWalk, namesAnElementOnceHoweverItIsReached) {
  elements = application.addWindows(R"(
    window 'Inbox' number=7
      group
        button 'A'
      group
  )");
  const auto window = elements[0];
  const auto first = elements[1];
  const auto button = elements[2];
  const auto second = elements[3];
  application.setChildren(window, {first, second}, "AXChildrenInNavigationOrder");
  application.setChildren(button, {first, window});
  application.setChildren(second, {button, second});
  const auto snapshot = capture();
  EXPECT_EQ(describe(snapshot), R"(0 AXWindow -> 1 2 AXTitle="Inbox"
  1 AXGroup -> 3
  2 AXGroup -> 3 2
    3 AXButton -> 1 0 AXTitle="A"
)");
  EXPECT_EQ(findViolation(snapshot), "");
}

TEST_F(TreeWalk, nodeLimitCountsWhatItLeavesOut) {
  elements = application.addWindows("window 'Inbox' number=7");
  std::vector<AccessibilityElement> rows(300);
  for (auto& row : rows) row = application.add();
  application.setChildren(elements[0], rows);
  limits.maximumNodeCount = 100;
  const auto snapshot = capture();
  EXPECT_EQ(snapshot.nodeCount, 100);
  EXPECT_EQ(snapshot.nodes[0].childIDs.size(), 99U);
  EXPECT_EQ(snapshot.truncations,
            std::vector({AccessibilityTruncation{AccessibilityTruncationReason::nodeLimit, 0, std::nullopt, 201}}));
  EXPECT_EQ(findViolation(snapshot), "");
}

TEST_F(TreeWalk, depthLimitCountsTheMembersWithoutCapturingThem) {
  limits.maximumDepth = 1;
  elements = application.addWindows(R"(
    window 'Inbox' number=7
      list
        row
        row
        row
      group
  )");
  const auto list = elements[1];
  application.setChildren(list, {elements[3], elements[4], application.add()}, "AXRows");
  const auto snapshot = capture();
  EXPECT_EQ(describe(snapshot), R"(0 AXWindow -> 1 2 AXTitle="Inbox"
  1 AXList
  2 AXGroup
depthLimit node 1 omitted 4
)");
}

TEST_F(TreeWalk, pagesLongListsAndAsksForNoMoreThanIsClaimed) {
  limits.childPageSize = 2;
  elements = application.addWindows(R"(
    window 'Inbox' number=7
      row
      row
      row
      row
      row
  )");
  application[elements[0]].claimedCounts["AXChildren"] = 9;  // four of them are not there
  EXPECT_EQ(capture().nodes[0].childIDs, (std::vector<std::int64_t>{1, 2, 3, 4, 5}));
  std::vector<std::pair<std::int64_t, std::int64_t>> pages;
  for (const auto& call : application.calls) {
    if (call.operation == "attributeValues" && call.name == "AXChildren") pages.emplace_back(call.index, call.count);
  }
  EXPECT_EQ(pages, (std::vector<std::pair<std::int64_t, std::int64_t>>{{0, 2}, {2, 2}, {4, 2}, {6, 2}, {8, 1}}));
}

TEST_F(TreeWalk, aPageThatBringsTooMuchIsCut) {
  elements = application.addWindows("window 'Inbox' number=7\n  row\n  row\n  row\n  row\n  row");
  application[elements[0]].ignoresPageEnds = true;
  limits.childPageSize = 2;
  limits.maximumNodeCount = 3;
  EXPECT_EQ(describe(capture()), R"(0 AXWindow -> 1 2 AXTitle="Inbox"
  1 AXRow
  2 AXRow
nodeLimit node 0 omitted 3
)");
}

TEST_F(TreeWalk, claimsOfAbsurdSizesAreCutLikeOthers) {
  elements = application.addWindows("window 'Inbox' number=7\n  row\n  row");
  auto& window = application[elements[0]];
  window.attributes["AXRows"] = window.attributes["AXChildren"];
  window.claimedCounts = {{"AXChildren", std::numeric_limits<std::int64_t>::max()},
                          {"AXRows", std::numeric_limits<std::int64_t>::max()}};
  limits.maximumNodeCount = 2;
  const auto snapshot = capture();
  EXPECT_EQ(snapshot.nodeCount, 2);
  ASSERT_EQ(snapshot.truncations.size(), 1U);
  EXPECT_GT(snapshot.truncations[0].omittedCount, 1'000'000'000);
  window.claimedCounts = {{"AXChildren", std::numeric_limits<std::int64_t>::min()}, {"AXRows", 0}};
  EXPECT_EQ(capture().nodeCount, 1);
}

TEST_F(TreeWalk, structuralTroubleIsRecordedAndTheRestIsRead) {
  elements = application.addWindows(R"(
    window 'Inbox' number=7
      group
      group
      group
      group
      group
        button 'A'
        button 'B'
  )");
  auto& attributes = application[elements[0]].attributes;
  ASSERT_TRUE(attributes.contains("AXChildren"));
  application[elements[1]].errors["AXChildren"] = AccessibilityErrorCode::cannotComplete;
  application[elements[2]].attributes["AXChildren"] = std::string("three");
  application[elements[3]].attributes["AXChildren"] = std::vector{AccessibilityElement{0}};
  application[elements[4]].errors["AXChildren"] = AccessibilityErrorCode::noValue;
  limits.childPageSize = 1;
  application.onCall = [&](const FakeCall& call) -> std::optional<AccessibilityErrorCode> {
    if (call.operation == "attributeValues" && call.element == elements[5] && call.index == 1) {
      return AccessibilityErrorCode::failure;
    }
    return std::nullopt;
  };
  EXPECT_EQ(describe(capture()), R"(0 AXWindow -> 1 2 3 4 5 AXTitle="Inbox"
  1 AXGroup
  2 AXGroup
  3 AXGroup
  4 AXGroup
  5 AXGroup -> 6
    6 AXButton AXTitle="A"
warning AXCannotComplete node 1 AXChildren: Could not read structural element count.
warning AXUnexpectedStructuralValue node 2 AXChildren: A structural accessibility attribute returned neither an element nor an element array.
warning AXUnexpectedStructuralMember node 3 AXChildren: A structural accessibility array contained a value that was not an accessibility element.
warning AXFailure node 5 AXChildren: Could not read structural elements.
)");
}

TEST_F(TreeWalk, aSingleElementIsAListOfOne) {
  elements = application.addWindows("window 'Inbox' number=7");
  application[elements[0]].attributes["AXContents"] = application.add();
  EXPECT_EQ(capture().nodes[0].childIDs, std::vector<std::int64_t>{1});
}

TEST_F(TreeWalk, hintsEveryElementOnceBeforeItIsRead) {
  elements = application.addWindows("window 'Inbox' number=7");
  std::vector<AccessibilityElement> rows;
  for (int i = 0; i < 1000; ++i) {
    rows.push_back(application.add());
    if (i % 10 == 0) application.setChildren(rows.back(), {application.add(), application.add()});
  }
  application.setChildren(elements[0], rows);
  const auto snapshot = capture();
  EXPECT_EQ(snapshot.nodeCount, 1201);
  std::vector<AccessibilityElement> hinted;
  std::size_t readCount = 0;
  for (const auto& call : application.calls) {
    if (call.operation == "willRead") hinted.push_back(call.element);
    if (call.operation != "attributeNames") continue;
    ASSERT_LT(readCount, hinted.size());
    EXPECT_EQ(hinted[readCount], call.element) << "in the order in which they are read";
    EXPECT_LE(hinted.size() - readCount, 256U);
    ++readCount;
  }
  EXPECT_EQ(hinted.size(), 1201U);
}

TEST_F(TreeWalk, manyIssuesAreCountedAndTheWarningComesLast) {
  elements = application.addWindows("window 'Inbox' number=7");
  std::vector<AccessibilityElement> rows;
  for (int i = 0; i < 201; ++i) {
    rows.push_back(application.add());
    application[rows.back()].errors["AXTitle"] = AccessibilityErrorCode::failure;
  }
  application.setChildren(elements[0], rows);
  application.warnings = {"The session has something to say."};
  const auto snapshot = capture();
  EXPECT_EQ(snapshot.issues.size(), 200U);
  EXPECT_EQ(snapshot.warnings, (std::vector<std::string>{"The session has something to say.",
                                                         "1 additional Accessibility capture issues were omitted."}));
}

TEST_F(TreeWalk, looksAtTheControlBetweenAnyTwoCalls) {
  elements = application.addWindows(R"(
    window 'Inbox' number=7
      text text='Hello' [focused]
      AXWebArea text='Page' actions=AXPress
  )");
  capture();
  const std::size_t callCount = application.calls.size();
  ASSERT_GE(callCount, 30U);
  for (std::size_t stopAt = 1; stopAt <= callCount; ++stopAt) {
    for (const bool isCancelled : {false, true}) {
      application.calls.clear();
      application.uptimeNanoseconds = 0;
      application.onCall = [&](const FakeCall&) -> std::optional<AccessibilityErrorCode> {
        if (application.calls.size() == stopAt) {
          if (isCancelled) control->cancel();
          application.uptimeNanoseconds = 15'000'000'000;
        }
        return std::nullopt;
      };
      if (isCancelled) {
        EXPECT_THROW(capture(), OperationCancelled);
      } else {
        EXPECT_EQ(failure(), "Accessibility capture exceeded its 15-second safety deadline.");
      }
      const bool isHint = application.calls[stopAt - 1].operation == "willRead";
      // One hint may name several elements; anything else is the last call that was made.
      EXPECT_TRUE(isHint || application.calls.size() == stopAt);
      for (std::size_t i = stopAt; i < application.calls.size(); ++i) {
        EXPECT_EQ(application.calls[i].operation, "willRead");
      }
    }
  }
}

TEST_F(TreeWalk, refusesATargetThatCannotBeRead) {
  application.addWindows("window 'Inbox' number=7");
  target.processIdentifier = 0;
  EXPECT_EQ(failure(), "0 is not a valid target process identifier.");
  target.processIdentifier = 400;
  application.isTrusted = false;
  EXPECT_EQ(failure(), "Quillo needs Accessibility access in System Settings to capture application context.");
  EXPECT_TRUE(application.calls.empty());
  application.isTrusted = true;
  application.answeredProcessIdentifier = 401;
  EXPECT_EQ(failure(), "The Accessibility API could not connect to process 400.");
  application.answeredProcessIdentifier = 400;
  target.windowID = 8;
  EXPECT_EQ(failure(),
            "Accessibility could not resolve frozen window 8 in PID 400: Accessibility exposed window IDs 7, but not "
            "frozen window 8.");
}

TEST_F(TreeWalk, theRootKindTellsWhichWindowItIs) {
  elements = application.addWindows(R"(
    window 'Compose' number=8
    window 'Inbox' number=7
  )");
  EXPECT_EQ(capture().rootKind, AccessibilityRootKind::application);
  application[application.application()].attributes["AXMainWindow"] = elements[1];
  EXPECT_EQ(capture().rootKind, AccessibilityRootKind::mainWindow);
  application[application.application()].attributes["AXFocusedWindow"] = elements[1];
  EXPECT_EQ(capture().rootKind, AccessibilityRootKind::focusedWindow);
}

TEST_F(TreeWalk, aFocusedDialogNeedNotStandInTheListOfWindows) {
  elements = application.addWindows("window 'Inbox' number=9");
  const auto dialog = application.add();
  application[dialog].attributes = {{"AXRole", std::string("AXWindow")},
                                    {"AXPosition", ArtifactPoint{0, 0}},
                                    {"AXSize", ArtifactSize{400, 300}},
                                    {"AXTitle", std::string("Inbox")}};
  application[application.application()].attributes["AXFocusedWindow"] = dialog;
  application.setChildren(dialog, {application.add()});
  EXPECT_EQ(describe(capture()), R"(0 AXWindow -> 1 (0,0,400,300) AXTitle="Inbox"
  1 AXUnknown
! The target window did not expose AXWindowNumber; Quillo matched frozen window 7 using its frame and title.
)");
}

}  // namespace
}  // namespace quillo::test
