// Pictures of the panel, to be looked at.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <memory>
#include <string>

#include "OffscreenApplication.h"
#include "Pictures.h"
#include "QuilloApp/Interface/HeadsUpPanel.h"
#include "QuilloApp/Interface/MainLoop.h"
#include "QuilloCore/Concurrency/TaskGroup.h"

namespace quillo::test {
namespace {

std::shared_ptr<const std::string> screenshot() {
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

TEST(HeadsUpPanelPictures, ofEveryState) {
  const OffscreenApplication application;
  MainLoop loop;
  TaskGroup tasks(loop.executor());
  const auto draw = [&](const std::string& name) {
    EXPECT_TRUE(loop.runUntil([&] { return tasks.isEmpty(); }, std::chrono::seconds(5)));
    int shownCount = 0;
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() != QStringLiteral("captureHeadsUpPanel") || !each->isVisible()) continue;
      for (const int scale : {1, 2}) savePicture(*each, "panel-" + name, scale);
      ++shownCount;
    }
    EXPECT_EQ(1, shownCount) << name;
  };
  inEveryLook([&](const std::string& look) {
    HeadsUpPanel panel(tasks, [&] { return loop.executor(); });
    CaptureNotice notice;
    notice.title = "Travel plans for a very long journey, with all of its trains and stations — Mail";
    notice.screenshotPNG = screenshot();
    panel.showProgress(notice);
    draw("progress-" + look);
    notice.detail = "812 elements, partial: element limit reached, 3 reading problems";
    panel.showSuccess(notice);
    draw("success-" + look);
    panel.showFailure({.message = "Quillo needs Screen Recording and Accessibility permission before capturing.",
                       .remedy = "Enable Quillo in Screen & System Audio Recording and Accessibility under System "
                                 "Settings > Privacy & Security, then relaunch Quillo.",
                       .windowFrame = {}});
    draw("failure-" + look);
  });
}

}  // namespace
}  // namespace quillo::test
