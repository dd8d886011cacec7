#pragma once

#include <QListView>

namespace quillo {

/// The list of captures. The keys go from capture to capture and never stop at a day.
class CaptureList : public QListView {
  Q_OBJECT

 public:
  using QListView::QListView;

 Q_SIGNALS:
  void lookRequested();
  void escaped();

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  /// The nearest capture at or after the row in that direction (1 or -1); an invalid index when there is none.
  QModelIndex captureFrom(int row, int direction) const;
  int rowsOfAPage() const;
};

}  // namespace quillo
