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

/// The colour of what is said beside the main thing: between the palette's text and its background.
QColor quietTextColor(const QPalette& palette, QPalette::ColorRole text, QPalette::ColorRole background);

}  // namespace quillo
