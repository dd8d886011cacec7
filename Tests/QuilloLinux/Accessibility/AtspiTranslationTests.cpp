// Small translations: actions, errors, rows and the place of a window.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "QuilloLinux/Accessibility/AtspiActions.h"
#include "QuilloLinux/Accessibility/AtspiErrors.h"
#include "QuilloLinux/Accessibility/AtspiTableRows.h"
#include "QuilloLinux/Accessibility/AtspiWindowPlacement.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;

TEST(AtspiActions, noiseIsDroppedAndKnownNamesAreTranslated) {
  EXPECT_THAT(mapActions({"click", "Press", "clipboard.copy", "SetFocus", "clickAncestor", "scrollForward", ";;", "",
                          "ShowMenu", "Increase", "Zoom\nin", "Zoom in"}),
              ElementsAre("AXPress", "AXShowMenu", "AXIncrement", "Zoom in"));
  for (const char* known : {"Click", "doDefault", "clipboard.copy", "SetFocus"}) EXPECT_TRUE(isKnownAction(known));
  for (const char* unknown : {"Klicken", ";;", "", "Zoom in"}) EXPECT_FALSE(isKnownAction(unknown)) << unknown;
}

TEST(AtspiErrors, busErrorsKeepTheirMeaning) {
  EXPECT_EQ(accessibilityErrorOf("org.freedesktop.DBus.Error.NoReply"), AccessibilityErrorCode::cannotComplete);
  EXPECT_EQ(accessibilityErrorOf("org.freedesktop.DBus.Error.ServiceUnknown"),
            AccessibilityErrorCode::invalidUIElement);
  EXPECT_EQ(accessibilityErrorOf("org.freedesktop.DBus.Error.UnknownMethod"),
            AccessibilityErrorCode::attributeUnsupported);
  EXPECT_EQ(accessibilityErrorOf("org.freedesktop.DBus.Error.AccessDenied"), AccessibilityErrorCode::apiDisabled);
  EXPECT_EQ(accessibilityErrorOf("com.example.Error.NoReply"), AccessibilityErrorCode::failure);
}

AtspiLooseCell makeCell(std::uint64_t token, std::optional<std::int32_t> row, std::optional<double> y = std::nullopt,
                        bool isHeader = false) {
  AtspiLooseCell cell{token, row, std::nullopt, isHeader};
  if (y) cell.frame = ArtifactRect{.x = 0, .y = *y, .width = 10, .height = 10};
  return cell;
}

TEST(AtspiTableRows, cellsStandInRowsByIndexElseByPlace) {
  const auto headed =
      makeRows(std::vector{makeCell(1, std::nullopt, 0, true), makeCell(2, std::nullopt, 0, true), makeCell(3, 0, 10),
                           makeCell(4, 0, 10.2), makeCell(5, 1, 10), makeCell(6, 0)});
  EXPECT_THAT(headed, ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4, 6), ElementsAre(5)));
  const auto placed = makeRows(std::vector{makeCell(1, std::nullopt, 10), makeCell(2, std::nullopt, 30),
                                           makeCell(3, std::nullopt, 10.4), makeCell(4, -1, 30)});
  EXPECT_THAT(placed, ElementsAre(ElementsAre(1, 3), ElementsAre(2, 4)));
  EXPECT_THAT(makeRows(std::vector{makeCell(1, std::nullopt), makeCell(2, std::nullopt)}),
              ElementsAre(ElementsAre(1, 2)));
}

TEST(AtspiWindowPlacement, windowIsPlacedOnTheFrameThatItFits) {
  WindowCaptureTarget target;
  target.windowFrame = {.x = 100, .y = 200, .width = 452, .height = 352};
  const ArtifactRect inner{.x = 0, .y = 0, .width = 400, .height = 300};
  // A shadow of 26 points on every side, when nobody says more.
  const auto guessed = placeWindow(inner, target);
  ASSERT_TRUE(guessed);
  EXPECT_EQ(guessed->origin, (ArtifactPoint{.x = 126, .y = 226}));
  EXPECT_EQ(guessed->frame, target.windowFrame);
  // The manager knows that the shadow is deeper below.
  target.equivalentFrames = {target.windowFrame, {.x = 126, .y = 218, .width = 400, .height = 300}};
  EXPECT_EQ(placeWindow(inner, target)->origin, (ArtifactPoint{.x = 126, .y = 218}));
  EXPECT_FALSE(placeWindow({.x = 0, .y = 0, .width = 100, .height = 100}, target)) << "another window";
  EXPECT_FALSE(placeWindow({.x = 0, .y = 0, .width = 800, .height = 300}, target)) << "too wide";
}

}  // namespace
}  // namespace quillo::test
