// Draws the library in every state, for people to look at. Fails when a state cannot be shown.

#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <filesystem>
#include <string>

#include "LibraryWindowFixture.h"
#include "Pictures.h"
#include "QuilloApp/Library/QuickLook.h"

namespace quillo::test {
namespace {

class LibraryPictures : public LibraryWindowFixture, public testing::WithParamInterface<int> {
 protected:
  LibraryPictures() : LibraryWindowFixture(GetParam()) {}

  static void draw(QWidget& widget, const std::string& state) {
    drawPictures(widget, "library-" + state, {GetParam()});
  }
  void draw(const std::string& state) { draw(*window, state); }
};

TEST_P(LibraryPictures, withoutCaptures) {
  model->startIfNeeded();
  runUntil([&] { return state().activity.kind == Activity::Kind::loading; });
  showWindow();
  draw("loading");
  settleAll();
  draw("empty");
  std::filesystem::remove_all(folder.path());
  model->reloadArtifacts();
  settleAll();
  EXPECT_TRUE(named<QPushButton>("retry").isVisible());
  draw("unreadable");
}

TEST_P(LibraryPictures, withSome) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  draw("selected");
  const QSize usual = window->size();
  window->resize(900, 600);
  draw("smallest");
  window->resize(usual);
  press(Qt::Key_Down, Qt::ShiftModifier);
  press(Qt::Key_Down, Qt::ShiftModifier);
  draw("several");
  press(Qt::Key_Home);
  press(Qt::Key_Space);
  auto* look = window->findChild<QuickLook*>();
  ASSERT_TRUE(look && look->isVisible());
  settleAll();
  draw(*look, "look");
  look->close();
  window->activateWindow();
  press(Qt::Key_Down, Qt::ShiftModifier);
  press(Qt::Key_Delete);
  EXPECT_TRUE(named<QPushButton>("undoTrash").isVisible());
  draw("trashed");
  QTest::keyClicks(&named<QLineEdit>("search"), QStringLiteral("tide"));
  settleAll();
  draw("found");
  QTest::keyClicks(&named<QLineEdit>("search"), QStringLiteral(" walrus"));
  settleAll();
  EXPECT_TRUE(named<QLabel>("feedMessage").isVisible());
  draw("nothing-found");
}

TEST_P(LibraryPictures, withDamage) {
  storeSome();
  writeFile(repository.bundlePath(ids[1]) / "manifest.json", "{\"schemaVersion\": 3,");
  std::filesystem::remove(repository.bundlePath(ids[2]) / "screenshot.png");
  open();
  model->select(ids[1]);
  settleAll();
  EXPECT_TRUE(named<QPushButton>("discard").isVisible());
  draw("damaged");
}

TEST_P(LibraryPictures, withAThousand) {
  storeSome();
  for (int number = 0; number < 994; ++number) store("Capture " + std::to_string(number), 2000 + 47 * number);
  open();
  list().setFocus();
  QScrollBar& bar = *list().verticalScrollBar();
  bar.setValue(bar.maximum() / 3);
  settleAll();
  draw("thousand");
}

INSTANTIATE_TEST_SUITE_P(Scales, LibraryPictures, testing::Values(1, 2), testing::PrintToStringParamName());

}  // namespace
}  // namespace quillo::test
