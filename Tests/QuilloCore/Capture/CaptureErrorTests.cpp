#include <gtest/gtest.h>

#include "QuilloCore/Capture/ContextCaptureServiceError.h"

namespace quillo::test {
namespace {

using Screenshot = WindowScreenshotCaptureError;
using Service = ContextCaptureServiceError;

const std::string recordingAdvice =
    "Enable Quillo in System Settings > Privacy & Security > Screen & System Audio Recording, then relaunch Quillo.";
const std::string frontAdvice = "Bring the window you want to capture to the front and try the capture shortcut again.";

TEST(WindowScreenshotCaptureError, namesWindowProcessAndSeconds) {
  EXPECT_EQ(Screenshot(Screenshot::NoSubstantialWindow{9, "Mail"}).errorDescription(),
            "No visible captureable window was found for Mail (PID 9).");
  EXPECT_EQ(Screenshot(Screenshot::NoSubstantialWindow{9, std::nullopt}).errorDescription(),
            "No visible captureable window was found for PID 9.");
  EXPECT_EQ(Screenshot(Screenshot::FrozenWindowUnavailable{7, 9, std::nullopt}).errorDescription(),
            "The frozen window 7 for PID 9 is no longer available to ScreenCaptureKit.");
  EXPECT_EQ(Screenshot(Screenshot::ScreenshotTimedOut{7, 2.5}).errorDescription(),
            "ScreenCaptureKit did not capture window 7 within 2.5 seconds.");
  EXPECT_EQ(Screenshot(Screenshot::FrozenWindowUnavailable{}).recoverySuggestion(), frontAdvice);
  EXPECT_EQ(Screenshot(Screenshot::WindowListUnavailable{}).recoverySuggestion(), std::nullopt);
}

TEST(ContextCaptureServiceError, asksForWhatIsMissing) {
  struct {
    ContextCapturePermissionState state;
    std::string message;
    std::string suggestion;
  } const cases[] = {
      {{false, true}, "Quillo needs Screen Recording permission before capturing.", recordingAdvice},
      {{true, false},
       "Quillo needs Accessibility permission before capturing.",
       "Enable Quillo in System Settings > Privacy & Security > Accessibility."},
      {{false, false},
       "Quillo needs Screen Recording and Accessibility permission before capturing.",
       "Enable Quillo in Screen & System Audio Recording and Accessibility under System Settings > Privacy & Security, "
       "then relaunch Quillo."}};
  for (const auto& each : cases) {
    const Service error(Service::PermissionsRequired{each.state});
    EXPECT_EQ(error.errorDescription(), each.message);
    EXPECT_EQ(error.recoverySuggestion(), each.suggestion);
  }
}

TEST(ContextCaptureServiceError, passesInnerErrorsOn) {
  const Service recording(Service::Screenshot{Screenshot(Screenshot::ScreenRecordingPermissionRequired{})});
  EXPECT_EQ(recording.errorDescription(),
            "Quillo needs Screen Recording permission before it can capture another app.");
  EXPECT_EQ(recording.recoverySuggestion(), recordingAdvice);
  const Service timedOut(
      Service::Accessibility{AccessibilityCaptureError(AccessibilityCaptureError::CaptureTimedOut{15})});
  EXPECT_EQ(timedOut.errorDescription(), "Accessibility capture exceeded its 15-second safety deadline.");
  EXPECT_EQ(timedOut.recoverySuggestion(), std::nullopt);
  EXPECT_EQ(Service(Service::ScreenshotWindowMismatch{11, 12, 400, 400}).errorDescription(),
            "Window capture returned window 12 from PID 400, not frozen window 11 from PID 400.");
}

}  // namespace
}  // namespace quillo::test
