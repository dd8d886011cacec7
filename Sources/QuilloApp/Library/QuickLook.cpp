#include "QuilloApp/Library/QuickLook.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include "QuilloApp/Interface/Thumbnails.h"

namespace quillo {
namespace {

constexpr int margin = 16;
constexpr qreal shareOfScreen = 0.85;

}  // namespace

QuickLook::QuickLook(Thumbnails& thumbnails, QWidget* keyReceiver, QWidget* parent)
    : QDialog(parent), thumbnails_(thumbnails), keyReceiver_(keyReceiver) {
  setObjectName(QStringLiteral("quickLook"));
  setMinimumSize(320, 240);
  if (const QScreen* screen = parent->screen()) resize(screen->availableSize() * shareOfScreen);
  connect(&thumbnails, &Thumbnails::loaded, this, [this](const QString& path) {
    if (path == path_) update();
  });
}

void QuickLook::show(const QString& title, const QString& screenshotPath) {
  path_ = screenshotPath;
  setWindowTitle(title);
  setAccessibleName(tr("Screenshot of %1").arg(title));
  update();
  QDialog::show();
}

void QuickLook::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().window());
  const QRect area = rect().adjusted(margin, margin, -margin, -margin);
  const QImage image = path_.isEmpty() ? QImage() : thumbnails_.image(path_, maximumPixels);
  if (image.isNull()) {
    painter.setPen(palette().color(QPalette::WindowText));
    const QString text = path_.isEmpty() ? tr("This capture has no screenshot.") : tr("Loading the screenshot…");
    painter.drawText(area, static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, text);
    return;
  }
  const QSizeF whole = QSizeF(image.size()) / devicePixelRatioF();
  QSizeF size = whole;
  if (whole.width() > area.width() || whole.height() > area.height())
    size = whole.scaled(area.size(), Qt::KeepAspectRatio);
  QRectF frame(QPointF(), size);
  frame.moveCenter(QRectF(area).center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform, size != whole);
  painter.drawImage(frame, image);
}

void QuickLook::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Escape) return reject();
  if (keyReceiver_ && event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
    QCoreApplication::sendEvent(keyReceiver_, event);
}

}  // namespace quillo
