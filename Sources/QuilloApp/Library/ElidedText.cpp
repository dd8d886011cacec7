#include "QuilloApp/Library/ElidedText.h"

namespace quillo {

void drawElided(QPainter& painter, const QRect& place, const QString& text, Qt::LayoutDirection windowDirection,
                Qt::TextElideMode mode) {
  const Qt::LayoutDirection before = painter.layoutDirection();
  painter.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  const QString shown = painter.fontMetrics().elidedText(text, mode, place.width());
  const Qt::AlignmentFlag side = windowDirection == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
  painter.drawText(place, static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
  painter.setLayoutDirection(before);
}

}  // namespace quillo
