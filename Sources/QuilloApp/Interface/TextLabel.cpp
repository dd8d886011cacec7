#include "QuilloApp/Interface/TextLabel.h"

#include <QEvent>

namespace quillo {

TextLabel::TextLabel(QWidget* parent, const QString& text) : QLabel(text, parent) {
  align(Qt::AlignVCenter);
}

void TextLabel::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange && alignment().testFlag(Qt::AlignAbsolute))
    align(alignment() & Qt::AlignVertical_Mask);
  QLabel::changeEvent(event);
}

void TextLabel::align(Qt::Alignment vertical) {
  setAlignment(vertical | Qt::AlignAbsolute | (isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft));
}

}  // namespace quillo
