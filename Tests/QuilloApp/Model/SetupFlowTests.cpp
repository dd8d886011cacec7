#include <gmock/gmock.h>

#include "ModelFixture.h"

namespace quillo::test {
namespace {

using SetupFlowTest = ModelFixture;

TEST_F(SetupFlowTest, theSettingsShowWhatOthersChange) {
  start();
  loginItem.enabled = true;
  permissions.granted.screenRecordingGranted = false;
  libraryMeasuring.answer.hold();
  model->refreshSettings();
  model->refreshSettings();
  settle();
  EXPECT_TRUE(state().startsAtLogin);
  EXPECT_FALSE(state().capturePermissionState.screenRecordingGranted);
  EXPECT_EQ(state().libraryUsage, std::nullopt);
  libraryMeasuring.answer.release();
  settle();
  EXPECT_EQ(state().libraryUsage, (LibraryUsage{.captureCount = 2, .byteCount = 3000}));
  EXPECT_EQ(libraryMeasuring.answer.count, 1) << "one count at a time";
  model->refreshSettings();
  settle();
  EXPECT_EQ(libraryMeasuring.answer.count, 2);
}

TEST_F(SetupFlowTest, startAtLoginIsSetOrSaysWhyNot) {
  start();
  model->setStartsAtLogin(true);
  EXPECT_TRUE(loginItem.enabled);
  EXPECT_TRUE(state().startsAtLogin);
  loginItem.refusal = "the disk is full";
  model->setStartsAtLogin(false);
  EXPECT_TRUE(state().startsAtLogin);
  EXPECT_EQ(activity(), "failure: Quillo could not change whether it starts at login: the disk is full");
}

}  // namespace
}  // namespace quillo::test
