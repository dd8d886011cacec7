#include "QuilloApp/Inspector/ScreenshotView.h"

#include <QPainter>

#include "QuilloApp/Interface/Thumbnails.h"

namespace quillo {

ScreenshotView::ScreenshotView(Thumbnails& thumbnails, QWidget* parent) : QWidget(parent), thumbnails_(thumbnails) {
  setMinimumHeight(120);
  connect(&thumbnails, &Thumbnails::loaded, this, [this](const QString& path) {
    if (path == path_) update();
  });
}

void ScreenshotView::setScreenshot(const QString& path) {
  if (path == path_) return;
  path_ = path;
  update();
}

void ScreenshotView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QImage image = path_.isEmpty() ? QImage() : thumbnails_.image(path_, picturePixels);
  if (image.isNull()) return;
  // Never larger than it is: a blown-up picture reads worse than a small one.
  QSizeF size = QSizeF(image.size()) / devicePixelRatioF();
  if (size.width() > width() - 2 || size.height() > height() - 2)
    size.scale(QSizeF(width() - 2, height() - 2), Qt::KeepAspectRatio);
  const QRectF frame(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(frame, image);
  QColor line = palette().color(QPalette::WindowText);
  line.setAlpha(64);
  painter.setPen(line);
  painter.drawRect(frame.adjusted(-0.5, -0.5, 0.5, 0.5));
}

}  // namespace quillo
