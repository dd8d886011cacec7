#include "QuilloApp/Interface/QuietLabel.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include "QuilloApp/Interface/QuietText.h"

namespace quillo {

QuietLabel::QuietLabel(const QString& objectName, QWidget* parent) : TextLabel(parent) {
  setObjectName(objectName);
  setTextFormat(Qt::PlainText);
  followPalette();
}

void QuietLabel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange) followPalette();
  TextLabel::changeEvent(event);
}

void QuietLabel::followPalette() {
  const QColor color = quietTextColor(QGuiApplication::palette(), QPalette::WindowText, QPalette::Window);
  // Setting it tells of a change again.
  if (palette().color(QPalette::Active, QPalette::WindowText) == color) return;
  QPalette quiet;
  quiet.setColor(QPalette::WindowText, color);
  setPalette(quiet);
}

}  // namespace quillo
