#include "QuilloApp/Library/ArtifactDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Library/ArtifactListModel.h"

namespace quillo {
namespace {

constexpr int margin = 8;
constexpr QSize pictureSize{88, 56};
constexpr qreal pictureRadius = 4;

void drawLine(QPainter* painter, const QRect& rect, const QFont& font, const QColor& color, const QString& text,
              Qt::TextElideMode elide = Qt::ElideRight) {
  painter->setFont(font);
  painter->setPen(color);
  const QString shown = QFontMetrics(font).elidedText(text, elide, rect.width());
  painter->drawText(rect, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeading) | Qt::TextSingleLine, shown);
}

/// The middle of the picture, as much as fills the frame; windows are recognised by their upper part.
void drawPicture(QPainter* painter, const QRect& frame, const QImage& image, const QColor& border) {
  QPainterPath path;
  path.addRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), pictureRadius, pictureRadius);
  painter->save();
  painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  QColor ground = border;
  ground.setAlpha(24);
  painter->fillPath(path, ground);
  if (!image.isNull()) {
    const QSizeF filled = QSizeF(frame.size()).scaled(image.size(), Qt::KeepAspectRatio);
    painter->setClipPath(path);
    painter->drawImage(QRectF(frame), image, QRectF(QPointF((image.width() - filled.width()) / 2, 0), filled));
    painter->setClipping(false);
  }
  QColor line = border;
  line.setAlpha(64);
  painter->setPen(line);
  painter->drawPath(path);
  painter->restore();
}

}  // namespace

void ArtifactDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const QPalette& palette = option.palette;
  const auto textRole = isSelected ? QPalette::HighlightedText : QPalette::Text;
  const auto groundRole = isSelected ? QPalette::Highlight : QPalette::Base;
  const QColor quiet = quietTextColor(palette, textRole, groundRole);
  QFont bold = option.font;
  bold.setBold(true);

  painter->save();
  const QRect inner = option.rect.adjusted(margin, 0, -margin, 0);
  if (index.data(ArtifactListModel::isDayRole).toBool()) {
    drawLine(painter, inner.adjusted(0, margin, 0, 0), bold, quiet, index.data().toString());
    painter->restore();
    return;
  }
  QApplication::style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);

  QRect frame(inner.topLeft(), pictureSize);
  frame.moveTop(option.rect.center().y() - pictureSize.height() / 2 + 1);
  QRect lines(frame.right() + 1 + margin + margin / 2, 0, 0, 0);
  lines.setRight(inner.right());
  if (option.direction == Qt::RightToLeft) {
    frame = QStyle::visualRect(option.direction, option.rect, frame);
    lines = QStyle::visualRect(option.direction, option.rect, lines);
  }
  drawPicture(painter, frame, index.data(Qt::DecorationRole).value<QImage>(), palette.color(textRole));

  const int height = option.fontMetrics.height();
  const int gap = margin / 4;
  const int top = option.rect.center().y() - (3 * height + 2 * gap) / 2;
  const auto line = [&](int number) {
    return QRect(lines.left(), top + number * (height + gap), lines.width(), height);
  };
  drawLine(painter, line(0), bold, palette.color(textRole), index.data().toString());
  drawLine(painter, line(1), option.font, quiet, index.data(ArtifactListModel::applicationRole).toString());
  drawLine(painter, line(2), option.font, quiet, index.data(ArtifactListModel::timeRole).toString());

  if (option.state.testFlag(QStyle::State_HasFocus)) {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.backgroundColor = palette.color(groundRole);
    QApplication::style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
  }
  painter->restore();
}

QSize ArtifactDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = option.fontMetrics.height();
  if (index.data(ArtifactListModel::isDayRole).toBool()) return {0, line + 2 * margin};
  return {0, std::max(pictureSize.height(), 3 * line + margin / 2) + 2 * margin};
}

}  // namespace quillo
