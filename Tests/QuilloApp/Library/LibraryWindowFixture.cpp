#include "LibraryWindowFixture.h"

#include <QPainter>
#include <QTest>

#include "QuilloApp/Library/FeedPane.h"

namespace quillo::test {
namespace {

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

}  // namespace

LibraryWindowFixture::LibraryWindowFixture(int pixelsPerPoint) : application_(QLocale::English, pixelsPerPoint) {
  wallClock.present = Date(std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
}

LibraryWindowFixture::~LibraryWindowFixture() {
  window.reset();
  decodes_.cancelAll();
  decoding_.runUntil([&] { return decodes_.isEmpty(); }, std::chrono::seconds(10));
}

void LibraryWindowFixture::storeSome() {
  ids = {storeOf("Mail", "Letter from the harbour", 5),
         storeOf("Terminal", "make check — 612 passed", 30),
         storeOf("Web Browser", "Tide tables for the northern coast", 95),
         storeOf("Mail", "Invoice 2041", 1500),
         storeOf("Web Browser", "A very long title of a page that no list can show in full, however wide", 1600),
         storeOf("Terminal", "Disk usage", 9000)};
  for (std::size_t i = 0; i < ids.size(); ++i)
    writeScreenshot(repository.bundlePath(ids[i]) / "screenshot.png", static_cast<int>(i));
}

void LibraryWindowFixture::open() {
  start();
  showWindow();
  settleAll();
}

void LibraryWindowFixture::showWindow() {
  window =
      std::make_unique<LibraryWindow>(*model, thumbnails_, LibraryWindow::Requests{[] {}, [] {}, [] { return false; }});
  window->show();
  window->activateWindow();
}

void LibraryWindowFixture::settleAll() {
  settle();
  decoding_.runUntil([&] { return decodes_.isEmpty(); }, std::chrono::seconds(10));
  QApplication::processEvents();
  settle();
}

void LibraryWindowFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(window->focusWidget(), key, modifiers);
  settleAll();
}

std::vector<std::string> LibraryWindowFixture::shown() {
  std::vector<std::string> titles;
  for (int row = 0; row < list().model()->rowCount(); ++row) {
    const QModelIndex index = list().model()->index(row, 0);
    if (index.flags().testFlag(Qt::ItemIsSelectable)) titles.push_back(index.data().toString().toStdString());
  }
  return titles;
}

std::vector<UUID> LibraryWindowFixture::selected() {
  return named<FeedPane>("feed").selectedIds();
}

}  // namespace quillo::test
