// Draws the library in every state and every look into the build folder, for people to look at. Fails when a state
// cannot be shown.

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <filesystem>
#include <string>

#include "LibraryWindowFixture.h"
#include "QuilloApp/Library/QuickLook.h"

namespace quillo::test {
namespace {

constexpr int quickly = 80;  ///< how little to compress pictures, of 100

struct Look {
  const char* name;
  QColor window, base, text, button, highlight, highlightedText, placeholder;
};

const Look dark{"dark", 0x2b2d30, 0x1e1f22, 0xe6e6e6, 0x35373b, 0x2f65ca, 0xffffff, 0x8f9297};
const Look contrast{"contrast", Qt::black, Qt::black, Qt::white, Qt::black, Qt::yellow, Qt::black, Qt::white};

QPalette paletteOf(const Look& look) {
  QPalette palette(look.button, look.window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, look.text);
    palette.setColor(QPalette::Disabled, role, look.placeholder);
  }
  palette.setColor(QPalette::Base, look.base);
  palette.setColor(QPalette::AlternateBase, look.window);
  palette.setColor(QPalette::Highlight, look.highlight);
  palette.setColor(QPalette::HighlightedText, look.highlightedText);
  palette.setColor(QPalette::PlaceholderText, look.placeholder);
  return palette;
}

class LibraryPictures : public LibraryWindowFixture, public testing::WithParamInterface<int> {
 public:
  ~LibraryPictures() override {
    QApplication::setPalette(QPalette());
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }

 protected:
  LibraryPictures() : LibraryWindowFixture(GetParam()) {}

  /// In each look, from right to left, and as small as the window is to be usable.
  void draw(QWidget& widget, const std::string& state) {
    const QPalette light = QApplication::palette();
    const QSize usual = widget.size();
    save(widget, state + "-light");
    for (const Look& look : {dark, contrast}) {
      QApplication::setPalette(paletteOf(look));
      save(widget, state + "-" + look.name);
    }
    QApplication::setPalette(light);
    if (GetParam() > 1) return;
    QApplication::setLayoutDirection(Qt::RightToLeft);
    save(widget, state + "-right-to-left");
    QApplication::setLayoutDirection(Qt::LeftToRight);
    widget.resize(900, 600);
    save(widget, state + "-small");
    widget.resize(usual);
    settlePaint();
  }
  void draw(const std::string& state) { draw(*window, state); }

 private:
  static void settlePaint() {
    for (int turn = 0; turn < 3; ++turn) QApplication::processEvents();
  }

  static void save(QWidget& widget, const std::string& name) {
    settlePaint();
    const std::string folder = QUILLO_PICTURE_FOLDER;
    std::filesystem::create_directories(folder);
    const std::string path = folder + "/library-" + name + (GetParam() == 2 ? "-2x" : "") + ".png";
    const QPixmap picture = widget.grab();
    EXPECT_EQ(widget.size() * GetParam(), picture.size());
    EXPECT_TRUE(picture.save(QString::fromStdString(path), "PNG", quickly)) << path;
  }
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
