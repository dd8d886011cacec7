#include "QuilloApp/Setup/SetupWindow.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <set>

#include "ModelFixture.h"
#include "OffscreenApplication.h"
#include "Pictures.h"
#include "QuilloApp/Model/QuilloUpdateController.h"
#include "QuilloApp/Setup/PracticeWindow.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo::test {
namespace {

class SetupWindowTest : public ModelFixture {
 public:
  ~SetupWindowTest() override { window.reset(); }

 protected:
  void open() {
    start();
    window = std::make_unique<SetupWindow>(*model, tasks);
    window->present();
    settle();
    QApplication::processEvents();
  }
  template <class Widget>
  Widget& widget(const char* name) {
    // The pages that are not shown have widgets of the same names.
    for (auto* each : window->findChildren<Widget*>(QString::fromLatin1(name))) {
      if (each->isVisible()) return *each;
    }
    ADD_FAILURE() << "there is no visible " << name;
    throw std::runtime_error(name);
  }
  void click(const char* name) {
    widget<QAbstractButton>(name).click();
    settle();
  }
  std::string text(const char* name) { return widget<QLabel>(name).text().toStdString(); }

  void completeGuide() { preferences.setInteger("onboardingVersion", 1); }

  const SoftwarePackage newer{.identifier = "n", .name = "quillo", .architecture = {}, .version = "0.2.0"};
  OffscreenApplication application;
  TaskGroup tasks{loop.executor()};
  std::unique_ptr<SetupWindow> window;
};

TEST_F(SetupWindowTest, theSettingsShowTheStateAndChangeIt) {
  completeGuide();
  permissions.granted.accessibilityGranted = false;
  open();
  EXPECT_EQ(text("accessibilityState"), "Accessibility: Not allowed yet");
  click("accessibilityButton");
  EXPECT_EQ(text("accessibilityState"), "Accessibility: Allowed");
  EXPECT_EQ(text("librarySize"), "2 captures · 2.93 KiB");
  click("startsAtLogin");
  EXPECT_TRUE(loginItem.enabled);
  EXPECT_EQ(text("updateStatus"), "Quillo is up to date.");
  click("downloadsAutomatically");
  EXPECT_EQ(preferences.data("automaticUpdateDownloads"), "true");
  softwareUpdates.update = newer;
  click("checkForUpdates");
  EXPECT_EQ(text("updateStatus"), "Quillo 0.2.0 is downloaded and can be installed.");
  click("updateAction");
  EXPECT_EQ(text("updateStatus"), "Quillo 0.2.0 is installed. It is used from the next start on.");
}

TEST_F(SetupWindowTest, whatCannotBeGrantedIsExplained) {
  completeGuide();
  permissions.granted.screenRecordingGranted = false;
  permissions.isRefusing = true;
  open();
  click("screenRecordingButton");
  EXPECT_NE(text("screenRecordingAdvice").find("X11 session"), std::string::npos);
}

TEST_F(SetupWindowTest, everyControlHasANameAndNoMnemonicMeansTwoThings) {
  const auto check = [&](const char* page) {
    std::set<QString> mnemonics;
    for (QWidget* each : window->findChildren<QWidget*>()) {
      if (!each->isVisible()) continue;
      QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(each);
      if (each->focusPolicy() != Qt::NoFocus && each->isEnabled())
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty()) << page << ": " << each->objectName().toStdString();
      const auto* button = qobject_cast<QAbstractButton*>(each);
      const auto* label = qobject_cast<QLabel*>(each);
      if (label != nullptr && label->buddy() == nullptr) continue;
      const QString text = button != nullptr ? button->text() : label != nullptr ? label->text() : QString();
      const QKeySequence mnemonic = QKeySequence::mnemonic(text);
      if (mnemonic.isEmpty()) continue;
      EXPECT_TRUE(mnemonics.insert(mnemonic.toString()).second) << page << ": " << text.toStdString();
    }
    EXPECT_FALSE(mnemonics.empty());
  };
  completeGuide();
  permissions.granted = {};
  softwareUpdates.update = newer;
  open();
  check("settings, with an update");
  permissions.granted = {.screenRecordingGranted = true, .accessibilityGranted = true};
  model->recheckCapturePermissions();
  settle();
  click("openGuide");
  check("access");
  click("guideNext");
  check("shortcuts");
  click("guideNext");
  check("capture");
}

/// Draws each state of the window, to be looked at.
class SetupPictures : public SetupWindowTest {
 protected:
  static void draw(QWidget& shown, const std::string& state) { drawPictures(shown, "setup-" + state); }
};

TEST_F(SetupPictures, settings) {
  completeGuide();
  open();
  draw(*window, "settings");
}

TEST_F(SetupPictures, settingsWithTrouble) {
  completeGuide();
  permissions.granted = {};
  permissions.isRefusing = true;
  registrar.takenElsewhere = {QuilloHotKeyConfiguration::defaults().capture};
  softwareUpdates.failure = SoftwareUpdateError(SoftwareUpdateError::ServiceFailed{"there is no network"});
  open();
  click("accessibilityButton");
  click("screenRecordingButton");
  draw(*window, "trouble");
}

TEST_F(SetupPictures, settingsWithAnUpdate) {
  completeGuide();
  softwareUpdates.update = newer;
  open();
  click("captureShortcut");
  draw(*window, "update");
}

TEST_F(SetupPictures, guide) {
  open();
  draw(*window, "guide-access");
  click("guideNext");
  draw(*window, "guide-shortcuts");
  click("guideNext");
  draw(*window, "guide-capture");
  wallClock.present =
      std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()) + std::chrono::hours(1);
  store("A Letter to Practise With");
  model->reloadArtifacts();
  settle();
  draw(*window, "guide-paste");
}

TEST_F(SetupPictures, practice) {
  PracticeWindow practice(QStringLiteral("Control + Alt + Super + C"), QStringLiteral("Control + Alt + Super + V"));
  practice.show();
  draw(practice, "practice");
}

}  // namespace
}  // namespace quillo::test
