#include "QuilloApp/Setup/GuideProgress.h"

#include <gtest/gtest.h>

#include <chrono>

namespace quillo::test {
namespace {

StoredArtifact capturedAt(Date date, const std::string& title) {
  StoredArtifact artifact;
  artifact.manifest.createdAt = date;
  artifact.manifest.title = title;
  return artifact;
}

TEST(GuideProgress, isToldFromWhatHasReallyHappened) {
  const Date began(std::chrono::seconds(1'700'000'000));
  GuideProgress progress(began);
  QuilloModelState state;
  state.hotKeyRegistrationError = "taken";
  state.capturePermissionState = {.screenRecordingGranted = true, .accessibilityGranted = false};
  state.artifacts = {capturedAt(began - std::chrono::seconds(1), "of yesterday")};
  progress.follow(state);
  for (const GuideStep step : GuideProgress::steps) EXPECT_FALSE(progress.isDone(step));

  state.hotKeyRegistrationError.reset();
  state.capturePermissionState.accessibilityGranted = true;
  state.artifacts.insert(state.artifacts.begin(), capturedAt(began, "Letter"));
  progress.follow(state);
  EXPECT_TRUE(progress.isDone(GuideStep::access));
  EXPECT_TRUE(progress.isDone(GuideStep::shortcuts));
  EXPECT_TRUE(progress.isDone(GuideStep::capture));
  EXPECT_EQ(progress.capturedTitle(), "Letter");
  EXPECT_FALSE(progress.isEverythingDone());
  progress.notePaste(1200);
  EXPECT_TRUE(progress.isEverythingDone());

  state.artifacts.clear();
  state.capturePermissionState.screenRecordingGranted = false;
  progress.follow(state);
  EXPECT_TRUE(progress.isDone(GuideStep::capture)) << "what was captured may be thrown away";
  EXPECT_FALSE(progress.isEverythingDone()) << "access was lost";
}

}  // namespace
}  // namespace quillo::test
