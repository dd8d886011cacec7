// Pictures of the panel, to be looked at: build/<preset>/pictures.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QWidget>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "QuilloApp/Interface/ContrastStyle.h"
#include "QuilloApp/Interface/HeadsUpPanel.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo::test {
namespace {

class HeadsUpPanelPictures : public testing::Test {
 protected:
  HeadsUpPanelPictures() { QApplication::setStyle(new ContrastStyle(QStringLiteral("Fusion"))); }

  static QPalette palette(QRgb window, QRgb text, QRgb accent) {
    QPalette made{QColor(window), QColor(window)};
    for (const auto role : {QPalette::WindowText, QPalette::Text}) made.setColor(role, QColor(text));
    made.setColor(QPalette::Highlight, QColor(accent));
    return made;
  }

  static std::shared_ptr<const std::string> screenshot() {
    QImage image(1280, 800, QImage::Format_RGB32);
    image.fill(QColor(250, 250, 252));
    QPainter painter(&image);
    painter.fillRect(0, 0, 1280, 120, QColor(52, 101, 164));
    for (int line = 0; line < 12; ++line) painter.fillRect(80, 180 + 48 * line, 900 - 40 * (line % 4), 16, Qt::gray);
    painter.end();
    QBuffer png;
    image.save(&png, "PNG");
    return std::make_shared<const std::string>(png.data().toStdString());
  }

  void draw(const std::string& name) {
    EXPECT_TRUE(loop_.runUntil([this] { return tasks_.isEmpty(); }, std::chrono::seconds(5)));
    QWidget* shown = nullptr;
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == QStringLiteral("captureHeadsUpPanel") && each->isVisible()) shown = each;
    }
    ASSERT_NE(shown, nullptr) << name;
    const QString folder = QStringLiteral(QUILLO_PICTURE_FOLDER);
    EXPECT_TRUE(QDir().mkpath(folder));
    for (const int scale : {1, 2}) {
      QApplication::processEvents();
      QImage image(shown->size() * scale, QImage::Format_RGB32);
      image.setDevicePixelRatio(scale);
      shown->render(&image);
      const std::string path = "/panel-" + name + (scale == 2 ? "-2x.png" : ".png");
      EXPECT_TRUE(image.save(folder + QString::fromStdString(path)));
    }
  }

 private:
  bool isOffscreen_ = qputenv("QT_QPA_PLATFORM", "offscreen");
  int argumentCount_ = 1;
  char name_[5] = "test";                  // NOLINT(*-avoid-c-arrays): what the toolkit wants
  char* arguments_[2] = {name_, nullptr};  // NOLINT(*-avoid-c-arrays)
  QApplication application_{argumentCount_, arguments_};

 protected:
  MainLoop loop_;
  TaskGroup tasks_{loop_.executor()};
};

TEST_F(HeadsUpPanelPictures, ofEveryState) {
  const std::vector<std::pair<std::string, QPalette>> looks = {
      {"light", palette(0xeff0f1, 0x232629, 0x3daee9)},
      {"dark", palette(0x2a2e32, 0xfcfcfc, 0x3daee9)},
      {"contrast", palette(0x000000, 0xffffff, 0xffff00)},
      {"right-to-left", palette(0xeff0f1, 0x232629, 0x3daee9)}};
  CaptureNotice notice;
  notice.title = "Travel plans for a very long journey, with all of its trains and stations — Mail";
  for (const auto& [name, colors] : looks) {
    QApplication::setPalette(colors);
    QApplication::setLayoutDirection(name == "right-to-left" ? Qt::RightToLeft : Qt::LeftToRight);
    HeadsUpPanel panel(tasks_, [this] { return loop_.executor(); });
    notice.screenshotPNG = screenshot();
    notice.detail.clear();
    panel.showProgress(notice);
    draw("progress-" + name);
    notice.detail = "812 elements, partial: element limit reached, 3 reading problems";
    panel.showSuccess(notice);
    draw("success-" + name);
    panel.showFailure({.message = "Quillo needs Screen Recording and Accessibility permission before capturing.",
                       .remedy = "Enable Quillo in Screen & System Audio Recording and Accessibility under System "
                                 "Settings > Privacy & Security, then relaunch Quillo.",
                       .windowFrame = {}});
    draw("failure-" + name);
    panel.hide();
  }
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace
}  // namespace quillo::test
