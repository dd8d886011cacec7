#include "QuilloApp/Library/CaptureList.h"

#include <QKeyEvent>
#include <algorithm>

namespace quillo {

QModelIndex CaptureList::captureFrom(int row, int direction) const {
  for (; row >= 0 && row < model()->rowCount(); row += direction) {
    const QModelIndex index = model()->index(row, 0);
    if (model()->flags(index).testFlag(Qt::ItemIsSelectable)) return index;
  }
  return {};
}

int CaptureList::rowsOfAPage() const {
  const int height = std::max(1, visualRect(currentIndex()).height());
  return std::max(1, viewport()->height() / height - 1);
}

QModelIndex CaptureList::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
  const QModelIndex current = currentIndex();
  const int last = model()->rowCount() - 1;
  if (!current.isValid()) return action == MoveEnd ? captureFrom(last, -1) : captureFrom(0, 1);
  const auto orStay = [&](const QModelIndex& index) { return index.isValid() ? index : current; };
  const auto orEnd = [&](const QModelIndex& index, int end, int back) {
    return index.isValid() ? index : captureFrom(end, back);
  };
  switch (action) {
    case MoveUp:
    case MovePrevious: return orStay(captureFrom(current.row() - 1, -1));
    case MoveDown:
    case MoveNext: return orStay(captureFrom(current.row() + 1, 1));
    case MoveHome: return captureFrom(0, 1);
    case MoveEnd: return captureFrom(last, -1);
    case MovePageUp: return orEnd(captureFrom(std::max(0, current.row() - rowsOfAPage()), -1), 0, 1);
    case MovePageDown: return orEnd(captureFrom(std::min(last, current.row() + rowsOfAPage()), 1), last, -1);
    case MoveLeft:
    case MoveRight: return current;
  }
  return current;
}

void CaptureList::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  // The toolkit makes the first one current, and leaves it unselected.
  if (currentIndex().isValid() && !selectionModel()->hasSelection())
    selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

void CaptureList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
    Q_EMIT lookRequested();
    return event->accept();
  }
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT escaped();
    return event->accept();
  }
  if (event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return) {
    if (currentIndex().isValid()) Q_EMIT activated(currentIndex());
    return event->accept();
  }
  QListView::keyPressEvent(event);
}

}  // namespace quillo
