#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "QuilloApp/Model/CaptureSummary.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Error = ContextCaptureServiceError;

class CaptureFlowTest : public ModelFixture {
 protected:
  CaptureFlowTest() { start(); }
};

TEST_F(CaptureFlowTest, theShortcutStoresAndSelectsTheWindow) {
  registrar.press(state().hotKeyConfiguration.capture);
  settle();
  EXPECT_THAT(titles(), ElementsAre("Letter"));
  ASSERT_TRUE(state().selectedArtifact);
  const ArtifactManifest& manifest = state().selectedArtifact->stored.manifest;
  EXPECT_EQ(state().selection, manifest.id);
  EXPECT_EQ(manifest.createdAt, Date(std::chrono::seconds(1'700'000'000)));
  EXPECT_EQ(manifest.source, (ArtifactSource{"Editor", std::nullopt, "Letter", ArtifactRect{1, 2, 300, 200}}));
  EXPECT_EQ(manifest.nodeCount, 2);
  EXPECT_THAT(manifest.contextText, testing::HasSubstr("- button \"Send\""));
  EXPECT_EQ(state().selectedArtifact->contents->screenshotPNG, "png of the letter");
  EXPECT_EQ(activity(), "success: Capture saved to the library");
  EXPECT_THAT(panel.log, ElementsAre("progress Letter", "success Letter: 2 elements, complete"));
  advance(2.2);
  EXPECT_EQ(panel.log.back(), "hide");
  EXPECT_EQ(activity(), "idle");
}

TEST_F(CaptureFlowTest, aWindowWithoutATitleIsCalledAfterItsApplication) {
  screenshot.outcome->window.title.clear();
  captureTargets.answer.outcome->windowTitle = "";
  model->captureFrontmostWindow();
  settle();
  EXPECT_THAT(titles(), ElementsAre("Editor"));
  EXPECT_THAT(panel.log, ElementsAre("progress Editor", "success Editor: 2 elements, complete"));
}

TEST_F(CaptureFlowTest, thePanelWaitsForThePixelsAndNotForTheTree) {
  screenshot.hold();
  snapshot.hold();
  model->captureFrontmostWindow();
  settle();
  EXPECT_EQ(activity(), "capturing");
  EXPECT_THAT(panel.log, IsEmpty());
  screenshot.release();
  settle();
  EXPECT_THAT(panel.log, ElementsAre("progress Letter"));
  snapshot.release();
  settle();
  EXPECT_EQ(panel.log.back(), "success Letter: 2 elements, complete");
}

TEST_F(CaptureFlowTest, whileOneCaptureRunsNoOtherBegins) {
  captureTargets.answer.hold();
  model->captureFrontmostWindow();
  model->captureFrontmostWindow();
  EXPECT_FALSE(model->canCaptureFrontmostWindowFromMenu());
  model->prepareCaptureTargetForMenu();
  model->captureFrontmostWindowFromMenu();
  settle();
  EXPECT_EQ(captureTargets.answer.count, 1);
  EXPECT_EQ(activity(), "capturing");
  captureTargets.answer.release();
  settle();
  EXPECT_EQ(titles().size(), 1U);
  EXPECT_TRUE(model->canCaptureFrontmostWindowFromMenu());
  model->captureFrontmostWindow();
  settle();
  EXPECT_EQ(titles().size(), 2U);
}

TEST_F(CaptureFlowTest, failuresAreToldWithTheirRemedy) {
  using Screenshot = WindowScreenshotCaptureError;
  const std::string unavailable = "The frozen window 11 for PID 400 is no longer available to ScreenCaptureKit.";
  const std::string denied = "Quillo needs Screen Recording permission before it can capture another app.";
  const std::string enable =
      "Enable Quillo in System Settings > Privacy & Security > Screen & System Audio Recording, then relaunch Quillo.";
  struct Case {
    Outcome<WindowScreenshotCapture> outcome;
    std::string activity;
    std::string panel;
  };
  for (const Case& each :
       {Case{failing(Screenshot(Screenshot::FrozenWindowUnavailable{11, 400, {}})), unavailable,
             unavailable + " (Bring the window you want to capture to the front and try the capture shortcut again.)"},
        {failing(Screenshot(Screenshot::ScreenRecordingPermissionRequired{})), denied + " " + enable,
         denied + " (" + enable + ")"},
        {failing(std::runtime_error("no ink")), "Window capture failed: no ink", "Window capture failed: no ink"}}) {
    screenshot.outcome = each.outcome;
    model->captureFrontmostWindow();
    settle();
    EXPECT_EQ(activity(), "failure: " + each.activity);
    EXPECT_EQ(panel.log.back(), "failure " + each.panel);
  }
  advance(5);
  EXPECT_EQ(panel.log.back(), "hide");
  EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(CaptureFlowTest, aMissingPermissionIsToldAndRemembered) {
  permissions.granted.accessibilityGranted = false;
  model->captureFrontmostWindow();
  settle();
  const std::string message = "Quillo needs Accessibility permission before capturing.";
  const std::string remedy = "Enable Quillo in System Settings > Privacy & Security > Accessibility.";
  EXPECT_EQ(activity(), "failure: " + message + " " + remedy);
  EXPECT_THAT(panel.log, ElementsAre("failure " + message + " (" + remedy + ")"));
  EXPECT_FALSE(state().capturePermissionState.accessibilityGranted);
  EXPECT_TRUE(await(model->requestCapturePermission(ContextCapturePermission::accessibility)));
  EXPECT_TRUE(state().capturePermissionState.accessibilityGranted);
  permissions.granted.screenRecordingGranted = false;
  model->recheckCapturePermissions();
  settle();
  EXPECT_FALSE(state().capturePermissionState.screenRecordingGranted);
}

TEST_F(CaptureFlowTest, noWindowNoTimeAndNoSpaceAreFailures) {
  captureTargets.answer.outcome = failing(Error(Error::NoFrontmostNonQuilloApplication{}));
  model->captureFrontmostWindow();
  settle();
  EXPECT_EQ(activity(), "failure: Quillo could not find a frontmost application window to capture.");

  captureTargets.answer.outcome = FakeCaptureTargets().answer.outcome;
  nextWorkerIsStuck = true;
  model->captureFrontmostWindow();
  settle();
  advance(9.99);
  EXPECT_FALSE(model->canCaptureFrontmostWindowFromMenu());
  advance(0.01);
  EXPECT_EQ(activity(), "failure: The operation exceeded its 10-second safety deadline.");
  EXPECT_TRUE(model->canCaptureFrontmostWindowFromMenu());

  files.record->isFull = true;
  model->captureFrontmostWindow();
  settle();
  EXPECT_THAT(activity(), testing::HasSubstr("No space left on device"));
  EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(CaptureFlowTest, theMenuCapturesWhatWasInFrontWhenItOpened) {
  const std::string message = "Open the Quillo menu from the window you want to capture, then choose Capture";
  model->captureFrontmostWindowFromMenu();
  EXPECT_EQ(activity(), "failure: " + message);

  model->prepareCaptureTargetForMenu();
  settle();
  captureTargets.answer.outcome = failing(Error(Error::NoFrontmostNonQuilloApplication{}));
  model->captureFrontmostWindowFromMenu();
  settle();
  EXPECT_THAT(titles(), ElementsAre("Letter"));

  model->prepareCaptureTargetForMenu();
  settle();
  EXPECT_TRUE(model->canCaptureFrontmostWindowFromMenu()) << "choosing it says what to do";
  model->captureFrontmostWindowFromMenu();
  settle();
  EXPECT_EQ(activity(), "failure: " + message);
  EXPECT_EQ(panel.log.back(), "failure " + message);
  panel.log.clear();
  model->captureFrontmostWindowFromMenu();
  EXPECT_THAT(panel.log, ElementsAre("hide", "failure " + message)) << "the former panel goes, not the new one";
}

TEST_F(CaptureFlowTest, aNewCaptureTakesTheSelectionOnlyWhenTheEditBeforeItIsSaved) {
  const UUID edited = store("edited");
  model->reloadArtifacts();
  settle();
  select(edited);
  model->setDraftTitle("typed");
  model->captureFrontmostWindow();
  settle();
  EXPECT_EQ(storedManifest(edited).title, "typed");
  EXPECT_EQ(state().draftTitle, "Letter");
}

TEST(CaptureSummary, countsTheElementsAndNamesWhatIsMissing) {
  AccessibilitySnapshot snapshot = makeSnapshot("window 'Letter'");
  EXPECT_EQ(captureSummary(snapshot), "1 element, complete");
  snapshot.nodeCount = 812;
  const auto addIssue = [&](AccessibilityIssueSeverity severity) {
    snapshot.issues.emplace_back().severity = severity;
  };
  addIssue(AccessibilityIssueSeverity::information);
  EXPECT_EQ(captureSummary(snapshot), "812 elements, complete");
  snapshot.wasTruncated = true;
  EXPECT_EQ(captureSummary(snapshot), "812 elements, partial: cut short");
  using Reason = AccessibilityTruncationReason;
  for (const Reason reason : {Reason::depthLimit, Reason::nodeLimit, Reason::depthLimit}) {
    snapshot.truncations.emplace_back().reason = reason;
  }
  addIssue(AccessibilityIssueSeverity::warning);
  EXPECT_EQ(captureSummary(snapshot),
            "812 elements, partial: element limit reached, depth limit reached, 1 reading problem");
}

}  // namespace
}  // namespace quillo::test
