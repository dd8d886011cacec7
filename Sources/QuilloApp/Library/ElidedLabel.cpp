#include "QuilloApp/Library/ElidedLabel.h"

#include <QPainter>

#include "QuilloApp/Library/ElidedText.h"

namespace quillo {

ElidedLabel::ElidedLabel(const QString& objectName, QWidget* parent) : QLabel(parent) {
  setObjectName(objectName);
  setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth(), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setFont(font());
  painter.setPen(palette().color(foregroundRole()));
  drawElided(painter, contentsRect(), text(), layoutDirection());
}

}  // namespace quillo
