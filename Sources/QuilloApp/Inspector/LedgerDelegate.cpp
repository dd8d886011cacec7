#include "QuilloApp/Inspector/LedgerDelegate.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

#include "QuilloApp/Inspector/FolioLayout.h"
#include "QuilloApp/Inspector/LedgerModel.h"
#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"

namespace quillo {
namespace {

constexpr int markSize = 2 * folio::unit;
constexpr int narrowestText = 4 * folio::unit;
constexpr int tintAlpha = 40;

/// Puts one thing after the other from where the line begins, in the line's direction.
class LineCursor {
 public:
  LineCursor(QRect room, Qt::LayoutDirection direction) : room_(room), direction_(direction) {}

  int remaining() const { return room_.width(); }

  QRect take(int width) {
    const int taken = std::clamp(width, 0, room_.width());
    QRect part = room_;
    if (direction_ == Qt::RightToLeft) {
      part.setLeft(room_.right() - taken + 1);
      room_.setRight(room_.right() - taken);
    } else {
      part.setWidth(taken);
      room_.setLeft(room_.left() + taken);
    }
    return part;
  }

 private:
  QRect room_;
  Qt::LayoutDirection direction_;
};

/// As on the screenshot: a dotted line in the desktop's accent, here over a tint of it.
void drawPointed(QPainter& painter, const QStyleOptionViewItem& option) {
  QColor tint = option.palette.color(QPalette::Active, QPalette::Highlight);
  painter.save();
  painter.setPen(QPen(tint, 1, Qt::DotLine));
  tint.setAlpha(tintAlpha);
  painter.setBrush(tint);
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

}  // namespace

QSize LedgerDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  return {30 * folio::unit, std::max(3 * folio::unit, option.fontMetrics.height() + folio::unit)};
}

void LedgerDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem background = option;
  background.text.clear();
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, option.widget);
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  // Not every style shows where the pointer is, and none shows where it is on the screenshot.
  const bool isPointed = option.state.testFlag(QStyle::State_MouseOver) || LedgerModel::lineOf(index) == pointed_;
  if (isPointed && !isSelected) drawPointed(*painter, option);

  const bool isHidden = index.data(LedgerModel::isHiddenRole).toBool();
  const auto text = isSelected ? QPalette::HighlightedText : QPalette::Text;
  const auto base = isSelected ? QPalette::Highlight : QPalette::Base;
  const QColor plain = option.palette.color(QPalette::Active, text);
  const QColor quiet = quietTextColor(option.palette, text, base);
  LineCursor cursor(option.rect.adjusted(folio::unit / 2, 0, -folio::unit / 2, 0), option.direction);
  QFont font = option.font;

  const auto mark = [&](const char* symbol) {
    const QRect place = cursor.take(markSize + folio::unit / 2);
    QRect square(0, 0, markSize, markSize);
    square.moveCenter(place.center());
    symbolIcon(symbol).paint(painter, square, Qt::AlignCenter, isSelected ? QIcon::Selected : QIcon::Normal);
  };
  const auto write = [&](const QString& words, const QColor& color) {
    if (words.isEmpty() || cursor.remaining() < narrowestText) return;
    const QFontMetrics metrics(font);
    const QRect place = cursor.take(metrics.horizontalAdvance(words) + 1);
    painter->setFont(font);
    painter->setPen(color);
    // Each text runs its own way, and ends with its dots there, at the place that the line gives it.
    painter->setLayoutDirection(words.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const auto side = option.direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
    painter->drawText(place, static_cast<int>(Qt::AlignVCenter | Qt::AlignAbsolute | side | Qt::TextSingleLine),
                      metrics.elidedText(words, Qt::ElideRight, place.width()));
    cursor.take(folio::unit);
  };

  painter->save();
  if (index.data(LedgerModel::isProtectedRole).toBool()) mark("lock");
  if (isHidden) mark("eye.slash");
  write(index.data(LedgerModel::roleWordRole).toString(), quiet);
  font.setItalic(isHidden);
  write(index.data(LedgerModel::nameRole).toString(), isHidden ? quiet : plain);
  write(index.data(LedgerModel::valueRole).toString(), isHidden ? quiet : plain);
  font.setItalic(true);
  write(index.data(LedgerModel::stateWordsRole).toStringList().join(QStringLiteral(", ")), quiet);
  painter->restore();
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.backgroundColor = option.palette.color(base);
    style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
  }
}

}  // namespace quillo
