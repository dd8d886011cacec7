#include "QuilloApp/Library/ArtifactDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "QuilloApp/Interface/QuietText.h"
#include "QuilloApp/Interface/Symbols.h"
#include "QuilloApp/Library/ArtifactListModel.h"
#include "QuilloApp/Library/ElidedText.h"

namespace quillo {
namespace {

constexpr int margin = 8;
constexpr QSize pictureSize{88, 56};
constexpr qreal pictureRadius = 4;
constexpr int markSize = 16;
constexpr qreal quietMark = 0.45;  ///< opacity of the mark that asks for nothing

void drawLine(QPainter* painter, const QRect& rect, const QFont& font, const QColor& color, const QString& text,
              Qt::LayoutDirection direction, Qt::TextElideMode mode = Qt::ElideRight) {
  painter->setFont(font);
  painter->setPen(color);
  drawElided(*painter, rect, text, direction, mode);
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

/// Styles draw theirs after Tab only, or over what it surrounds; among several selected captures it is what the arrows
/// move.
void drawFocus(QPainter* painter, const QRect& rect, QColor color) {
  color.setAlpha(160);
  painter->setPen(color);
  painter->setBrush(Qt::NoBrush);
  painter->setRenderHint(QPainter::Antialiasing);
  painter->drawRoundedRect(QRectF(rect).adjusted(2.5, 2.5, -2.5, -2.5), pictureRadius, pictureRadius);
}

}  // namespace

QPixmap ArtifactDelegate::symbol(const char* name, int size, const QStyleOptionViewItem& option) const {
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const qreal ratio = option.widget ? option.widget->devicePixelRatioF() : 1;
  const auto role = isSelected ? QPalette::HighlightedText : QPalette::WindowText;
  const QString key = QStringLiteral("%1 %2 %3 %4")
                          .arg(QLatin1String(name), QString::number(size), QString::number(ratio),
                               QApplication::palette().color(role).name());
  QPixmap& pixmap = symbols_[key];
  if (pixmap.isNull())
    pixmap = symbolIcon(name).pixmap(QSize(size, size), ratio, isSelected ? QIcon::Selected : QIcon::Normal);
  return pixmap;
}

void ArtifactDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  painter->save();
  if (index.data(ArtifactListModel::isDayRole).toBool()) {
    QFont bold = option.font;
    bold.setBold(true);
    const QColor quiet = quietTextColor(option.palette, QPalette::Text, QPalette::Base);
    drawLine(painter, option.rect.adjusted(margin, margin, -margin, 0), bold, quiet, index.data().toString(),
             option.direction);
  } else {
    drawCapture(painter, option, index);
  }
  painter->restore();
}

void ArtifactDelegate::drawCapture(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const QPalette& palette = option.palette;
  const auto textRole = isSelected ? QPalette::HighlightedText : QPalette::Text;
  const auto groundRole = isSelected ? QPalette::Highlight : QPalette::Base;
  const QColor quiet = quietTextColor(palette, textRole, groundRole);
  const auto condition = static_cast<CaptureCondition>(index.data(ArtifactListModel::conditionRole).toInt());
  QApplication::style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);

  // Laid out from the left, and mirrored where one reads from the right.
  const QRect inner = option.rect.adjusted(margin, 0, -margin, 0);
  const auto placed = [&](const QRect& rect) { return QStyle::visualRect(option.direction, option.rect, rect); };
  QRect frame(inner.topLeft(), pictureSize);
  frame.moveTop(option.rect.center().y() - pictureSize.height() / 2 + 1);
  const QVariant picture = index.data(Qt::DecorationRole);
  drawPicture(painter, placed(frame), picture.value<QImage>(), palette.color(textRole));
  if (condition == CaptureCondition::damaged && picture.value<QImage>().isNull()) {
    QRect middle(0, 0, 2 * markSize, 2 * markSize);
    middle.moveCenter(placed(frame).center());
    painter->drawPixmap(middle, symbol("exclamationmark.triangle", middle.width(), option));
  }

  const int height = option.fontMetrics.height();
  const int gap = margin / 4;
  const int left = frame.right() + 1 + margin + margin / 2;
  const int top = option.rect.center().y() - (3 * height + 2 * gap) / 2;
  const auto line = [&](int number) {
    return QRect(left, top + number * (height + gap), inner.right() - left, height);
  };
  QFont bold = option.font;
  bold.setBold(true);
  drawLine(painter, placed(line(0)), bold, palette.color(textRole), index.data().toString(), option.direction);
  drawLine(painter, placed(line(1)), option.font, quiet, index.data(ArtifactListModel::applicationRole).toString(),
           option.direction, condition == CaptureCondition::damaged ? Qt::ElideMiddle : Qt::ElideRight);

  QRect mark(0, 0, markSize, markSize);
  mark.moveCenter(line(2).center());
  mark.moveRight(line(2).right());
  QString time = index.data(ArtifactListModel::timeRole).toString();
  const char* name = "checkmark.circle";
  if (condition != CaptureCondition::complete) {
    time += QStringLiteral(" · ") + conditionInWords(condition);
    name = condition == CaptureCondition::damaged ? "exclamationmark.triangle" : "exclamationmark.circle";
  }
  drawLine(painter, placed(line(2).adjusted(0, 0, -markSize - margin, 0)), option.font, quiet, time, option.direction);
  painter->setOpacity(condition == CaptureCondition::complete ? quietMark : 1);
  painter->drawPixmap(placed(mark), symbol(name, markSize, option));
  painter->setOpacity(1);

  if (option.state.testFlag(QStyle::State_HasFocus)) drawFocus(painter, option.rect, palette.color(textRole));
}

QSize ArtifactDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = option.fontMetrics.height();
  if (index.data(ArtifactListModel::isDayRole).toBool()) return {0, line + 2 * margin};
  return {0, std::max(pictureSize.height(), 3 * line + margin / 2) + 2 * margin};
}

}  // namespace quillo
