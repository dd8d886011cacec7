#include "QuilloApp/Model/QuilloUpdateController.h"

#include <gmock/gmock.h>

#include "ModelFixture.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Phase = SoftwareUpdateState::Phase;
using Error = SoftwareUpdateError;

class QuilloUpdateControllerTest : public ModelFixture {
 protected:
  QuilloUpdateControllerTest() { wallClock.present = lastNight; }

  QuilloUpdateController& updates() { return model->updates(); }
  const SoftwareUpdateState& now() { return state().softwareUpdates; }
  std::vector<std::string> asked() { return std::exchange(softwareUpdates.log, {}); }
  /// An hour of both clocks.
  void passHour() {
    wallClock.present += std::chrono::hours(1);
    advance(QuilloUpdateController::dueCheckInterval);
  }

  const Date lastNight = *parseDate("2026-11-20T22:00:00Z");
  const SoftwarePackage newer{.identifier = "n", .name = "quillo", .architecture = "amd64", .version = "0.2.0"};
};

TEST_F(QuilloUpdateControllerTest, checksByItselfOnceADay) {
  preferences.setString("lastUpdateCheck", "2026-11-20T12:00:00Z");
  start();
  EXPECT_THAT(asked(), ElementsAre("installedPackage"));
  EXPECT_EQ(now().phase, Phase::ready);
  for (int hour = 0; hour < 13; ++hour) passHour();
  EXPECT_THAT(asked(), IsEmpty());
  passHour();
  EXPECT_THAT(asked(), ElementsAre("findUpdate"));
  EXPECT_EQ(now().phase, Phase::upToDate);
  EXPECT_EQ(preferences.string("lastUpdateCheck"), "2026-11-21T12:00:00Z");
  EXPECT_EQ(activity(), "idle") << "nobody asked";

  updates().setChecksAutomatically(false);
  EXPECT_EQ(preferences.data("automaticUpdateChecks"), "false");
  for (int hour = 0; hour < 30; ++hour) passHour();
  EXPECT_THAT(asked(), IsEmpty());
  updates().setChecksAutomatically(true);
  settle();
  EXPECT_THAT(asked(), ElementsAre("findUpdate")) << "it is long due";
}

TEST_F(QuilloUpdateControllerTest, whatIsFoundIsDownloadedByItselfOnlyWhenTheUserWantsThat) {
  softwareUpdates.update = newer;
  start();
  EXPECT_THAT(asked(), ElementsAre("installedPackage", "findUpdate"));
  EXPECT_EQ(now().phase, Phase::available);
  EXPECT_EQ(now().newVersion, "0.2.0");
  updates().setDownloadsAutomatically(true);
  settle();
  EXPECT_EQ(now().phase, Phase::downloaded);
  updates().checkForUpdates();
  settle();
  EXPECT_THAT(asked(), ElementsAre("download", "findUpdate for the user", "download"));
  updates().install();
  settle();
  EXPECT_THAT(asked(), ElementsAre("install for the user"));
  EXPECT_EQ(now().phase, Phase::installed);
  EXPECT_EQ(activity(), "success: Quillo 0.2.0 is installed; it is used from the next start on");
}

TEST_F(QuilloUpdateControllerTest, whereThereIsNobodyToAskItSaysWhyAndOffersNothing) {
  softwareUpdates.failure = Error(Error::NoPackageService{});
  start();
  EXPECT_EQ(now().phase, Phase::unavailable);
  EXPECT_EQ(now().message, Error(Error::NoPackageService{}).errorDescription());
  EXPECT_FALSE(updates().canCheckForUpdates());
  updates().checkForUpdates();
  for (int hour = 0; hour < 30; ++hour) passHour();
  EXPECT_THAT(asked(), ElementsAre("installedPackage"));
  softwareUpdates.failure.reset();
  updates().lookAgain();
  settle();
  EXPECT_EQ(now().phase, Phase::upToDate);
}

TEST_F(QuilloUpdateControllerTest, aServiceThatFailsSaysSoAndCanBeAskedAgain) {
  softwareUpdates.failure = Error(Error::ServiceFailed{"there is no network"});
  start();
  EXPECT_EQ(now().phase, Phase::failed);
  EXPECT_EQ(now().message, "The system's package service failed: there is no network");
  EXPECT_EQ(activity(), "idle") << "the user has not asked";
  updates().checkForUpdates();
  settle();
  EXPECT_EQ(activity(), "failure: The system's package service failed: there is no network");
  EXPECT_EQ(now().lastCheck, std::nullopt);
  softwareUpdates.failure.reset();
  updates().checkForUpdates();
  settle();
  EXPECT_EQ(activity(), "success: Quillo is up to date");
  EXPECT_EQ(now().lastCheck, lastNight);
}

TEST_F(QuilloUpdateControllerTest, oneOperationRunsAtATimeAndCanBeCancelled) {
  preferences.setString("lastUpdateCheck", "2026-11-20T12:00:00Z");
  start();
  softwareUpdates.hangs = true;
  updates().checkForUpdates();
  updates().checkForUpdates();
  settle();
  EXPECT_EQ(now().phase, Phase::checking);
  EXPECT_FALSE(updates().canCheckForUpdates());
  EXPECT_THAT(asked(), ElementsAre("installedPackage", "findUpdate for the user"));
  updates().cancel();
  settle();
  EXPECT_EQ(now().phase, Phase::ready);
  updates().cancel();
  settle();
  EXPECT_EQ(now().phase, Phase::ready);
}

}  // namespace
}  // namespace quillo::test
