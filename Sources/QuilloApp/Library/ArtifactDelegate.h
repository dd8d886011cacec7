#pragma once

#include <QStyledItemDelegate>

namespace quillo {

/// Paints the library's rows: a quiet line for a day; thumbnail, title, application and time for an artifact.
class ArtifactDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quillo
