#pragma once

#include <QPainter>
#include <QString>

namespace quillo {

/// Draws one line in the painter's font and colour, at the side from which the window is read. What does not fit is cut
/// where the text ends, which is not where the window ends when one is read from the left and the other from the right.
void drawElided(QPainter& painter, const QRect& place, const QString& text, Qt::LayoutDirection windowDirection,
                Qt::TextElideMode mode = Qt::ElideRight);

}  // namespace quillo
