#pragma once

#include <QHash>
#include <QPixmap>
#include <QStyledItemDelegate>

namespace quillo {

/// Paints the library's rows: a quiet line for a day; thumbnail, title, application, time and a quiet mark for a
/// capture.
class ArtifactDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void drawCapture(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
  /// A symbol in the row's colour; drawn once for all rows.
  QPixmap symbol(const char* name, int size, const QStyleOptionViewItem& option) const;

  mutable QHash<QString, QPixmap> symbols_;
};

}  // namespace quillo
