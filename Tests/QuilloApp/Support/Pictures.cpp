#include "Pictures.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPalette>
#include <QStyle>
#include <array>
#include <utility>

namespace quillo::test {
namespace {

struct Colors {
  QColor window, base, text, button, highlight, highlightedText, faint;
};

const Colors dark{0x2b2d30, 0x1e1f22, 0xe6e6e6, 0x35373b, 0x2f65ca, 0xffffff, 0x8f9297};
const Colors contrast{Qt::black, Qt::black, Qt::white, Qt::black, Qt::yellow, Qt::black, Qt::white};

QPalette paletteOf(const Colors& colors) {
  QPalette palette(colors.button, colors.window);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, colors.text);
    palette.setColor(QPalette::Disabled, role, colors.faint);
  }
  palette.setColor(QPalette::Base, colors.base);
  palette.setColor(QPalette::AlternateBase, colors.window);
  palette.setColor(QPalette::Highlight, colors.highlight);
  palette.setColor(QPalette::HighlightedText, colors.highlightedText);
  palette.setColor(QPalette::PlaceholderText, colors.faint);
  return palette;
}

}  // namespace

void inEveryLook(const std::function<void(const std::string& look)>& draw) {
  const std::array looks = {std::pair("light", QApplication::style()->standardPalette()),
                            std::pair("dark", paletteOf(dark)), std::pair("contrast", paletteOf(contrast))};
  const QPalette usual = QApplication::palette();
  for (const auto& [look, palette] : looks) {
    QApplication::setPalette(palette);
    draw(look);
  }
  QApplication::setPalette(usual);
  QApplication::setLayoutDirection(Qt::RightToLeft);
  draw("right-to-left");
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

void savePicture(QWidget& shown, const std::string& name, int scale) {
  for (int turn = 0; turn < 3; ++turn) QApplication::processEvents();
  QImage image(shown.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(shown.palette().color(QPalette::Window));
  shown.render(&image);
  const std::string path = QUILLO_PICTURE_FOLDER "/" + name + (scale == 1 ? ".png" : "-2x.png");
  constexpr int quickly = 80;  // how little to compress, of 100
  EXPECT_TRUE(QDir().mkpath(QStringLiteral(QUILLO_PICTURE_FOLDER)));
  EXPECT_TRUE(image.save(QString::fromStdString(path), "PNG", quickly)) << path;
}

void drawPictures(QWidget& shown, const std::string& name, std::initializer_list<int> scales) {
  inEveryLook([&](const std::string& look) {
    const std::string named = fmt::format("{}-{}", name, look);
    for (const int scale : scales) savePicture(shown, named, scale);
  });
}

}  // namespace quillo::test
