#pragma once

#include <QString>
#include <QWidget>

namespace quillo {

class Thumbnails;

/// An artifact's picture, as large as fits.
class ScreenshotView : public QWidget {
 public:
  explicit ScreenshotView(Thumbnails& thumbnails, QWidget* parent = nullptr);

  void setScreenshot(const QString& path);
  QSize sizeHint() const override { return {480, 240}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  static constexpr int picturePixels = 1600;  ///< of the longer side; enough for a wide pane at twice the resolution

  Thumbnails& thumbnails_;
  QString path_;
};

}  // namespace quillo
