#include "QuilloLinux/Accessibility/AtspiWindowRecognition.h"

#include <gtest/gtest.h>

namespace quillo::test {
namespace {

TEST(AtspiWindowRecognition, theTitleTellsWindowsInOnePlaceApart) {
  constexpr ArtifactRect place{0, 19, 1280, 1005};
  constexpr ArtifactRect decorated{0, 0, 1280, 1024};
  WindowCaptureTarget target;
  target.windowFrame = place;
  target.windowTitle = "Second note";
  target.equivalentFrames = {decorated};
  const auto recognized = [&](std::vector<AccessibilityWindowCandidate> windows) {
    return recognizeByTitle(windows, target);
  };
  const AccessibilityWindowCandidate first{0, std::nullopt, place, "First note"};
  const AccessibilityWindowCandidate second{1, std::nullopt, decorated, "Second  note"};
  const AccessibilityWindowCandidate elsewhere{2, std::nullopt, ArtifactRect{5, 5, 90, 90}, "Second note"};
  EXPECT_EQ(recognized({first, elsewhere, second}), 2U);
  EXPECT_EQ(recognized({second, elsewhere}), std::nullopt) << "its place is its own";
  EXPECT_EQ(recognized({first, second, second}), std::nullopt) << "two bear the title";
  EXPECT_EQ(recognized({first, first}), std::nullopt) << "none bears it";
  target.windowTitle = " ";
  EXPECT_EQ(recognized({first, {1, std::nullopt, place, ""}}), std::nullopt) << "an empty title tells nothing";
}

}  // namespace
}  // namespace quillo::test
