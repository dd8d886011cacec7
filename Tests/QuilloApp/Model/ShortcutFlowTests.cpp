#include <gmock/gmock.h>

#include "ModelFixture.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyPreferences.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ShortcutFlowTest : public ModelFixture {
 protected:
  QuilloHotKeyConfiguration other() {
    QuilloHotKeyConfiguration configuration = QuilloHotKeyConfiguration::defaults();
    configuration.capture.keyCode = 2;
    configuration.capture.keyLabel = "D";
    return configuration;
  }

  const QuilloHotKeyConfiguration usual = QuilloHotKeyConfiguration::defaults();
};

TEST_F(ShortcutFlowTest, aFailedRegistrationIsTriedAgainAtLongerAndLongerTimes) {
  registrar.takenElsewhere = {usual.capture};
  start();
  EXPECT_EQ(state().hotKeyRegistrationError, "Quillo could not reserve the capture shortcut (OSStatus 10).");
  const auto tries = [&] { return std::ranges::count(registrar.log, "install"); };
  EXPECT_EQ(tries(), 1);
  int expected = 1;
  for (const double delay : {2.0, 4.0, 8.0, 16.0, 32.0, 60.0, 60.0}) {
    advance(delay - 0.01);
    EXPECT_EQ(tries(), expected);
    advance(0.01);
    EXPECT_EQ(tries(), ++expected) << delay;
  }
  registrar.takenElsewhere.clear();
  advance(60);
  EXPECT_EQ(activity(), "success: Keyboard shortcuts ready");
  EXPECT_EQ(state().hotKeyRegistrationError, std::nullopt);
  advance(600);
  EXPECT_EQ(tries(), expected + 1);
}

TEST_F(ShortcutFlowTest, whatIsLostLaterIsTriedAgainFromTheBeginning) {
  start();
  registrar.takenElsewhere = {usual.paste};
  registrar.lose(std::nullopt, hotKeyIsTaken);
  EXPECT_TRUE(state().hotKeyRegistrationError);
  advance(2);
  EXPECT_TRUE(state().hotKeyRegistrationError);
  registrar.takenElsewhere.clear();
  advance(4);
  EXPECT_EQ(activity(), "success: Keyboard shortcuts ready");
}

TEST_F(ShortcutFlowTest, aNewPairIsRegisteredKeptAndReported) {
  start();
  EXPECT_TRUE(model->updateHotKeyConfiguration(other()));
  EXPECT_EQ(activity(), "success: Keyboard shortcuts updated");
  EXPECT_EQ(state().hotKeyConfiguration, other());
  EXPECT_EQ(QuilloHotKeyPreferences::load(preferences), other());
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(other().capture, other().paste));
  registrar.press(other().capture);
  settle();
  EXPECT_THAT(titles(), ElementsAre("Letter"));
}

TEST_F(ShortcutFlowTest, aPairThatCannotBeUsedLeavesTheFormerOne) {
  start();
  QuilloHotKeyConfiguration same = usual;
  same.paste = same.capture;
  const auto invalid = model->updateHotKeyConfiguration(same);
  ASSERT_FALSE(invalid);
  EXPECT_EQ(invalid.error().errorDescription(), "Capture and paste need different shortcuts.");

  registrar.takenElsewhere = {other().capture};
  const auto taken = model->updateHotKeyConfiguration(other());
  ASSERT_FALSE(taken);
  EXPECT_EQ(taken.error().errorDescription(), "Quillo could not reserve the capture shortcut (OSStatus 10).");

  EXPECT_EQ(state().hotKeyConfiguration, usual);
  EXPECT_EQ(state().hotKeyRegistrationError, std::nullopt);
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(usual.capture, usual.paste));
  EXPECT_EQ(preferences.data("hotKeyConfiguration"), std::nullopt);

  registrar.takenElsewhere = {other().capture, usual.capture};
  hotKeys.unregisterAll();
  EXPECT_FALSE(model->updateHotKeyConfiguration(other()));
  EXPECT_TRUE(state().hotKeyRegistrationError) << "not even the former pair could be put back";
  registrar.takenElsewhere.clear();
  advance(2);
  EXPECT_EQ(activity(), "success: Keyboard shortcuts ready");
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(usual.capture, usual.paste));
}

TEST_F(ShortcutFlowTest, whileAShortcutIsRecordedNoneWorks) {
  start();
  model->beginHotKeyRecording();
  EXPECT_THAT(registrar.reservedHotKeys(), IsEmpty());
  advance(100);
  EXPECT_THAT(registrar.reservedHotKeys(), IsEmpty());
  model->endHotKeyRecording();
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(usual.capture, usual.paste));

  model->beginHotKeyRecording();
  EXPECT_TRUE(model->updateHotKeyConfiguration(other()));
  model->endHotKeyRecording();
  EXPECT_THAT(registrar.reservedHotKeys(), ElementsAre(other().capture, other().paste));
}

}  // namespace
}  // namespace quillo::test
