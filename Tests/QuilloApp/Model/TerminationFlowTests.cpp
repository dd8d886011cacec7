#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "QuilloApp/Model/QuilloApplicationDelegate.h"
#include "Tests/Support/Gate.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TerminationFlowTest : public ModelFixture {
 public:
  ~TerminationFlowTest() override { await(delegate.shutDown()); }

 protected:
  TerminationFlowTest() : id(store("Title")), delegate(loop.executor()) {
    start();
    delegate.installMenuBarUtility(*model, {.openLibrary = [this] { opened.emplace_back("library"); },
                                            .quit = [this] { opened.emplace_back("quit"); }});
    select(id);
  }

  void quit() {
    EXPECT_EQ(delegate.applicationShouldTerminate([this](bool may) { answers.push_back(may); }),
              TerminationReply::later);
    settle();
  }

  UUID id;
  QuilloApplicationDelegate delegate;
  std::vector<bool> answers;
  std::vector<std::string> opened;
};

TEST_F(TerminationFlowTest, quitsAtOnceWhenThereIsNothingToDo) {
  QuilloApplicationDelegate withoutModel(loop.executor());
  EXPECT_EQ(withoutModel.applicationShouldTerminate({}), TerminationReply::now);
  quit();
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_FALSE(delegate.terminationIsPending());
  EXPECT_FALSE(model->canCaptureFrontmostWindowFromMenu()) << "nothing begins any more";
  EXPECT_FALSE(model->canPasteSelectedArtifact());
}

TEST_F(TerminationFlowTest, whatWasCopiedOutlivesTheApplicationIfTheDisplayDoes) {
  quit();
  EXPECT_EQ(pasteboard.log.back(), "handOver");
  pasteboard.error = PasteboardError(PasteboardError::DisplayLost{});
  quit();
  EXPECT_THAT(answers, ElementsAre(true, true));
}

TEST_F(TerminationFlowTest, staysWhenAnEditCannotBeWritten) {
  files.record->isFull = true;
  model->setDraftTitle("typed");
  quit();
  EXPECT_THAT(answers, ElementsAre(false));
  EXPECT_EQ(activity(), "failure: Quillo could not finish saving edits before quitting. Try again.");
  EXPECT_EQ(state().draftTitle, "typed");
  EXPECT_TRUE(model->canCaptureFrontmostWindowFromMenu());
  files.record->isFull = false;
  quit();
  EXPECT_THAT(answers, ElementsAre(false, true));
  EXPECT_EQ(storedManifest(id).title, "typed");
}

TEST_F(TerminationFlowTest, doesNotWaitForAnArtifactThatIsGone) {
  model->setDraftTitle("typed");
  outsideStore.moveToTrash(id);
  quit();
  EXPECT_THAT(answers, ElementsAre(true));
}

TEST_F(TerminationFlowTest, waitsForACaptureAndAnswersEveryoneWhoAsked) {
  snapshot.hold();
  model->captureFrontmostWindow();
  settle();
  quit();
  quit();
  EXPECT_TRUE(delegate.terminationIsPending());
  EXPECT_THAT(answers, IsEmpty());
  advance(4.9);
  EXPECT_THAT(answers, IsEmpty());
  snapshot.release();
  settle();
  EXPECT_THAT(answers, ElementsAre(true, true));
  EXPECT_EQ(outsideStore.list().size(), 2U);
}

TEST_F(TerminationFlowTest, waitsForACaptureNoLongerThanFiveSecondsAndThenSaves) {
  snapshot.hold();
  model->captureFrontmostWindow();
  settle();
  quit();
  model->setDraftTitle("typed while waiting");
  advance(5);
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(storedManifest(id).title, "typed while waiting");
  await(model->shutDown());
  EXPECT_EQ(outsideStore.list().size(), 1U);
}

TEST_F(TerminationFlowTest, waitsForAPasteToGiveTheClipboardBack) {
  modifiers.held.shift = true;
  model->pasteSelectedArtifact(500);
  settle();
  quit();
  EXPECT_THAT(answers, IsEmpty());
  modifiers.held.shift = false;
  clock.advance(0.01);
  EXPECT_TRUE(runUntil([&] { return !answers.empty(); }));
  EXPECT_THAT(answers, ElementsAre(true));
  EXPECT_EQ(activity(), "success: Screenshot, interface map, and note pasted");
}

TEST_F(TerminationFlowTest, aSaveThatDoesNotEndIsGivenUpAfterFourSeconds) {
  Gate diskAnswers;
  files.record->beforeWriting = [&] { diskAnswers.pass(); };
  model->setDraftTitle("typed");
  delegate.applicationShouldTerminate([this](bool may) { answers.push_back(may); });
  loop.runReady();
  clock.advance(3.99);
  loop.runReady();
  EXPECT_THAT(answers, IsEmpty());
  clock.advance(0.01);
  loop.runReady();
  EXPECT_THAT(answers, ElementsAre(false));
  EXPECT_EQ(activity(), "failure: Quillo could not finish saving edits before quitting. Try again.");
  diskAnswers.open();
  settle();
}

TEST_F(TerminationFlowTest, theMenuActsOnTheModel) {
  const std::vector<StatusMenuEntry> entries = delegate.menuWillOpen();
  EXPECT_EQ(entries.front().text, "Quillo");
  settle();
  EXPECT_EQ(captureTargets.answer.count, 1);
  EXPECT_THAT(destination.frozen, ElementsAre(500));
  permissions.granted.accessibilityGranted = false;
  delegate.perform(StatusMenuAction::recheckCaptureAccess);
  settle();
  EXPECT_FALSE(state().capturePermissionState.accessibilityGranted);
  delegate.perform(StatusMenuAction::openAccessibilitySettings);
  settle();
  EXPECT_TRUE(state().capturePermissionState.accessibilityGranted);
  model->hideOnboarding();
  delegate.perform(StatusMenuAction::openSetup);
  EXPECT_TRUE(state().isShowingOnboarding);
  delegate.perform(StatusMenuAction::openLibrary);
  delegate.perform(StatusMenuAction::checkForUpdates);
  delegate.perform(StatusMenuAction::quit);
  EXPECT_THAT(opened, ElementsAre("library", "quit"));
  delegate.perform(StatusMenuAction::captureFrontmostWindow);
  settle();
  EXPECT_EQ(captureTargets.answer.count, 1) << "what was frozen when the menu opened is captured";
  EXPECT_EQ(titles().size(), 2U);
}

}  // namespace
}  // namespace quillo::test
