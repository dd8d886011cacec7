// The library's window over a real model, drawn into memory and driven by keys.

#include "QuilloApp/Library/LibraryWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QPainter>
#include <QStyleFactory>
#include <QTest>
#include <cstdlib>
#include <memory>

#include "ModelFixture.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloApp/Interface/QtThumbnailDecoder.h"
#include "QuilloApp/Interface/Thumbnails.h"
#include "QuilloApp/Library/CaptureList.h"
#include "QuilloApp/Library/FeedPane.h"
#include "QuilloApp/Library/QuickLook.h"
#include "QuilloCore/Concurrency/WorkerPool.h"

namespace quillo::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Something that looks like a window, so that pictures of the library can be judged.
void writeScreenshot(const std::filesystem::path& path, int number) {
  QImage image(960, 640, QImage::Format_RGB32);
  image.fill(QColor::fromHsv(number * 47 % 360, 24, 248));
  QPainter painter(&image);
  painter.fillRect(0, 0, 960, 56, QColor::fromHsv(number * 47 % 360, 120, 160));
  for (int line = 0; line < 12; ++line)
    painter.fillRect(48, 104 + line * 40, 300 + (line * 131 + number * 77) % 520, 14, QColor(90, 96, 110));
  painter.end();
  image.save(QString::fromStdString(path.string()));
}

class LibraryWindowTest : public ModelFixture {
 protected:
  LibraryWindowTest() {
    wallClock.present = Date(std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  }

  ~LibraryWindowTest() override {
    window.reset();
    decodes_.cancelAll();
    decoding_.runUntil([&] { return decodes_.isEmpty(); }, std::chrono::seconds(10));
  }

  UUID storeOf(const std::string& application, const std::string& title, int minutesAgo) {
    const UUID id = store(title, minutesAgo);
    const StoredArtifact stored = outsideStore.load(id).stored;
    ArtifactManifest manifest = stored.manifest;
    manifest.source.applicationName = application;
    outsideStore.update(stored, manifest);
    writeScreenshot(stored.screenshotPath(), minutesAgo);
    return id;
  }

  /// Six captures of three applications over three days.
  void storeSome() {
    ids = {storeOf("Mail", "Letter from the harbour", 5),
           storeOf("Terminal", "make check — 612 passed", 30),
           storeOf("Web Browser", "Tide tables for the northern coast", 95),
           storeOf("Mail", "Invoice 2041", 1500),
           storeOf("Web Browser", "A very long title of a page that no list can show in full, however wide", 1600),
           storeOf("Terminal", "Disk usage", 9000)};
  }

  void open() {
    start();
    window = std::make_unique<LibraryWindow>(*model, thumbnails_,
                                             LibraryWindow::Requests{[] {}, [] {}, [] { return false; }});
    window->show();
    window->activateWindow();
    settleAll();
  }

  void settleAll() {
    settle();
    decoding_.runUntil([&] { return decodes_.isEmpty(); }, std::chrono::seconds(10));
    QApplication::processEvents();
    settle();
  }

  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* receiver = window->focusWidget();
    QTest::keyClick(receiver, key, modifiers);
    settleAll();
  }

  template <class Widget>
  Widget& named(const char* name) {
    auto* widget = window->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(nullptr, widget) << name;
    return *widget;
  }
  CaptureList& list() { return named<CaptureList>("captures"); }

  std::vector<std::string> shown() {
    std::vector<std::string> titles;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      const QModelIndex index = list().model()->index(row, 0);
      if (index.flags().testFlag(Qt::ItemIsSelectable)) titles.push_back(index.data().toString().toStdString());
    }
    return titles;
  }

  std::vector<UUID> selected() { return named<FeedPane>("feed").selectedIds(); }

  /// Writes what is on the screen, once and twice as fine.
  void picture(const std::string& name) {
    const QString folder = QStringLiteral(QUILLO_PICTURE_FOLDER) + QStringLiteral("/library");
    ASSERT_TRUE(QDir().mkpath(folder));
    for (const int scale : {1, 2}) {
      QImage image(window->size() * scale, QImage::Format_RGB32);
      image.setDevicePixelRatio(scale);
      window->render(&image);
      EXPECT_TRUE(image.save(QStringLiteral("%1/%2@%3x.png").arg(folder, QString::fromStdString(name)).arg(scale)));
    }
  }

  std::vector<UUID> ids;

 private:
  static char** arguments() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static char name[] = "test";
    static char* texts[] = {name, nullptr};
    return texts;
  }

  int argumentCount_ = 1;
  QApplication application_{argumentCount_, arguments()};
  MainLoop decoding_;
  WorkerPool workers_;
  QtThumbnailDecoder decoder_;
  ArtifactThumbnailCache cache_{decoder_, workers_};
  TaskGroup decodes_{decoding_.executor()};
  Thumbnails thumbnails_{cache_, decodes_};

 protected:
  std::unique_ptr<LibraryWindow> window;
};

TEST_F(LibraryWindowTest, keysGoFromCaptureToCaptureAndSelectSeveral) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  EXPECT_THAT(selected(), ElementsAre(ids[0]));
  EXPECT_EQ(ids[0], state().selection);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  EXPECT_THAT(selected(), ElementsAre(ids[3])) << "a day is stepped over";
  press(Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_THAT(selected(), ElementsAre(ids[2], ids[3]));
  EXPECT_EQ(ids[2], state().selection) << "the current one is what the inspector shows";
  press(Qt::Key_End);
  EXPECT_THAT(selected(), ElementsAre(ids[5]));
  press(Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(6U, selected().size());
  press(Qt::Key_Down, Qt::ControlModifier);
  press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(5U, selected().size());

  press(Qt::Key_Home);
  press(Qt::Key_Space);
  auto* look = window->findChild<QuickLook*>();
  ASSERT_TRUE(look && look->isVisible());
  EXPECT_EQ("Letter from the harbour", look->windowTitle().toStdString());
  QTest::keyClick(look, Qt::Key_Down);
  settleAll();
  EXPECT_EQ("make check — 612 passed", look->windowTitle().toStdString());
  QTest::keyClick(look, Qt::Key_Escape);
  EXPECT_FALSE(look->isVisible());
}

TEST_F(LibraryWindowTest, severalGoToTheTrashAndComeBack) {
  storeSome();
  open();
  list().setFocus();
  press(Qt::Key_Home);
  press(Qt::Key_Down, Qt::ShiftModifier);
  press(Qt::Key_Delete);
  EXPECT_EQ(4U, shown().size());
  EXPECT_EQ(ids[2], state().selection);
  EXPECT_TRUE(named<QPushButton>("undoTrash").isVisible());
  picture("trashed-light");
  named<QAction>("undo").trigger();
  settleAll();
  EXPECT_EQ(6U, shown().size());
  EXPECT_EQ(ids[0], state().selection);
  EXPECT_FALSE(named<QPushButton>("undoTrash").isVisible());
}

TEST_F(LibraryWindowTest, searchAndFilterNarrowTheListAndEscapeShowsAll) {
  storeSome();
  open();
  auto& search = named<QLineEdit>("search");
  auto& filter = named<QComboBox>("applicationFilter");
  EXPECT_EQ("All applications (6)", filter.itemText(0).toStdString());
  EXPECT_EQ("Terminal (2)", filter.itemText(2).toStdString());
  named<QAction>("&Find").trigger();
  QTest::keyClicks(&search, QStringLiteral("tide"));
  settleAll();
  EXPECT_THAT(shown(), ElementsAre("Tide tables for the northern coast"));
  EXPECT_EQ("1 of 6 captures", named<QLabel>("count").text().toStdString());
  press(Qt::Key_Return);
  EXPECT_TRUE(list().hasFocus());
  EXPECT_EQ(ids[2], state().selection);
  picture("found-light");
  press(Qt::Key_Escape);
  EXPECT_EQ(6U, shown().size());
  EXPECT_EQ(ids[2], state().selection) << "what was found stays selected";

  Q_EMIT filter.activated(1);
  settleAll();
  EXPECT_THAT(shown(), ElementsAre("Letter from the harbour", "Invoice 2041"));
  QTest::keyClicks(&search, QStringLiteral("walrus"));
  settleAll();
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_TRUE(named<QLabel>("feedMessage").isVisible());
  picture("nothing-found-light");
  named<QPushButton>("showAll").click();
  settleAll();
  EXPECT_EQ(6U, shown().size());
}

TEST_F(LibraryWindowTest, damageIsShownWithItsReasonAndItsWayToTheTrash) {
  storeSome();
  writeFile(repository.bundlePath(ids[1]) / "manifest.json", "{\"schemaVersion\": 3,");
  open();
  model->select(ids[1]);
  settleAll();
  picture("damaged-light");
  EXPECT_EQ(std::ptrdiff_t{1}, std::ranges::count(shown(), "Damaged capture"));
  list().setFocus();
  press(Qt::Key_Delete);
  EXPECT_EQ(0, std::ranges::count(shown(), "Damaged capture"));
  EXPECT_EQ("success: Artifact moved to Trash", activity());
}

TEST_F(LibraryWindowTest, everyControlHasAName) {
  storeSome();
  open();
  const auto widgets = window->findChildren<QWidget*>();
  for (const QWidget* widget : widgets) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_"))
      continue;
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const bool isNamed = !widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
    const bool isInner = qobject_cast<const QWidget*>(widget->parent())->inherits("QAbstractItemView");
    EXPECT_TRUE(isNamed || isInner) << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

QPalette darkPalette() {
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, const char* color) { palette.setColor(role, QColor(color)); };
  set(QPalette::Window, "#2b2d30");
  set(QPalette::WindowText, "#e6e6e6");
  set(QPalette::Base, "#1e1f22");
  set(QPalette::AlternateBase, "#26282b");
  set(QPalette::Text, "#e6e6e6");
  set(QPalette::Button, "#35373b");
  set(QPalette::ButtonText, "#e6e6e6");
  set(QPalette::PlaceholderText, "#8f9297");
  set(QPalette::Highlight, "#2f65ca");
  set(QPalette::HighlightedText, "#ffffff");
  return palette;
}

QPalette highContrastPalette() {
  QPalette palette = darkPalette();
  for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::AlternateBase})
    palette.setColor(role, Qt::black);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
    palette.setColor(role, Qt::white);
  palette.setColor(QPalette::Highlight, Qt::yellow);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  return palette;
}

/// Pictures to be looked at; that each state can be drawn at all is what is checked.
TEST_F(LibraryWindowTest, pictures) {
  const QPalette light = QApplication::palette();
  open();
  picture("empty-light");
  QApplication::setPalette(darkPalette());
  QApplication::processEvents();
  picture("empty-dark");
  QApplication::setPalette(light);
  storeSome();
  model->libraryChanged();
  settleAll();
  picture("unselected-light");
  list().setFocus();
  press(Qt::Key_Home);
  for (const auto& [name, palette] :
       {std::pair{"light", light}, {"dark", darkPalette()}, {"contrast", highContrastPalette()}}) {
    QApplication::setPalette(palette);
    settleAll();
    picture(std::string("selected-") + name);
  }
  QApplication::setPalette(light);
  QApplication::setLayoutDirection(Qt::RightToLeft);
  settleAll();
  picture("selected-rtl");
  QApplication::setLayoutDirection(Qt::LeftToRight);
  window->resize(900, 600);
  press(Qt::Key_Down, Qt::ShiftModifier);
  picture("several-900x600");
  std::filesystem::remove_all(folder.path());
  model->reloadArtifacts();
  settleAll();
  picture("unreadable-light");
}

}  // namespace
}  // namespace quillo::test
