#include "QuilloCore/Capture/AccessibilityCaptureControl.h"

#include <gtest/gtest.h>

#include <limits>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"

namespace quillo::test {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(AccessibilityCaptureControl, stopsAtItsDeadlineWithoutBeingTold) {
  std::uint64_t now = 1'000;
  AccessibilityCaptureControl control(1.5, [&] { return now; });
  EXPECT_EQ(control.deadlineUptimeNanoseconds(), 1'500'001'000U);
  control.checkpoint();
  now = 1'500'000'999;
  EXPECT_EQ(control.remainingNanoseconds(), 1U);
  EXPECT_EQ(control.stopReason(), std::nullopt);
  now = 1'500'001'000;
  EXPECT_EQ(control.stopReason(), AccessibilityCaptureStopReason::timedOut);
  control.cancel();
  now = 0;
  EXPECT_EQ(control.stopReason(), AccessibilityCaptureStopReason::timedOut) << "the first reason stays";
  EXPECT_EQ(control.remainingNanoseconds(), 0U);
  try {
    control.checkpoint();
    FAIL();
  } catch (const AccessibilityCaptureError& error) {
    EXPECT_EQ(error, AccessibilityCaptureError(AccessibilityCaptureError::CaptureTimedOut{1.5}));
    EXPECT_EQ(error.errorDescription(), "Accessibility capture exceeded its 1.5-second safety deadline.");
  }
}

TEST(AccessibilityCaptureControl, deadlinesSaturate) {
  constexpr auto latest = std::numeric_limits<std::uint64_t>::max();
  const auto deadline = [](double timeout, std::uint64_t start) {
    return AccessibilityCaptureControl(timeout, [] { return std::uint64_t{0}; }, start).deadlineUptimeNanoseconds();
  };
  EXPECT_EQ(deadline(1e300, 5), latest);
  EXPECT_EQ(deadline(2, latest - 10), latest);
  EXPECT_EQ(deadline(-3, 5), 5U);
  EXPECT_EQ(deadline(notANumber, 5), 5U);
  EXPECT_EQ(deadline(infinity, 5), 5U);
}

TEST(AccessibilityCaptureConfiguration, clampsEveryLimit) {
  const auto clamped = AccessibilityCaptureConfiguration{0, -1, -1, -1, 0, -1, 100, infinity}.clamped();
  EXPECT_EQ(clamped, (AccessibilityCaptureConfiguration{1, 0, 0, 0, 1, 0, 30.0, 15.0}));
  EXPECT_EQ((AccessibilityCaptureConfiguration{.messagingTimeout = notANumber, .captureTimeout = -infinity}.clamped()),
            (AccessibilityCaptureConfiguration{.messagingTimeout = 0.1, .captureTimeout = 15.0}));
  EXPECT_EQ((AccessibilityCaptureConfiguration{.messagingTimeout = -infinity, .captureTimeout = 500}.clamped()),
            (AccessibilityCaptureConfiguration{.messagingTimeout = 0.1, .captureTimeout = 120.0}));
  EXPECT_EQ(AccessibilityCaptureConfiguration{}.clamped(), AccessibilityCaptureConfiguration{});
}

}  // namespace
}  // namespace quillo::test
