#pragma once

#include <QStyledItemDelegate>
#include <cstdint>

namespace quillo {

/// Draws a line of the ledger: marks of protected and hidden ones, the role, the name, the value, the states.
class LedgerDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// The line that the pointer is at on the screenshot; -1 for none.
  void setPointed(std::int32_t line) { pointed_ = line; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  std::int32_t pointed_ = -1;
};

}  // namespace quillo
