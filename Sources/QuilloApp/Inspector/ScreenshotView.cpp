#include "QuilloApp/Inspector/ScreenshotView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quillo {
namespace {

constexpr std::array zoomSteps = {0.1, 0.25, 0.33, 0.5, 0.67, 0.75, 1.0, 1.5, 2.0, 3.0, 4.0, 8.0};
constexpr double crispZoom = 2;  ///< from here on single pixels are what one looks for
constexpr int keyStep = 48;
constexpr double litMargin = 24;
constexpr QColor shade(0, 0, 0, 104);

}  // namespace

ScreenshotView::ScreenshotView(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::StyledPanel);
  viewport()->setMouseTracking(true);
  viewport()->setObjectName(QStringLiteral("screenshotViewport"));
  for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()}) bar->setSingleStep(keyStep);
  horizontalScrollBar()->setAccessibleName(tr("Across the screenshot"));
  verticalScrollBar()->setAccessibleName(tr("Down the screenshot"));
}

void ScreenshotView::setPicture(std::shared_ptr<const CapturedPicture> picture, const PicturePlace& place) {
  picture_ = std::move(picture);
  place_ = place;
  message_.clear();
  lit_.reset();
  pointed_.reset();
  setZoom({});
}

void ScreenshotView::showMessage(const QString& message) {
  setPicture(nullptr, {});
  message_ = message;
  updateDescription();
}

void ScreenshotView::setLit(const std::optional<ArtifactRect>& frame, const QString& words) {
  lit_ = place_.isKnown() ? frame : std::nullopt;
  litWords_ = words;
  if (lit_ && zoom_) {
    const QRectF shown = inViewport(*lit_).adjusted(-litMargin, -litMargin, litMargin, litMargin);
    const QRectF room = viewport()->rect();
    const auto move = [](QScrollBar& bar, double low, double high, double end) {
      // What does not fit whole shows its beginning.
      if (low < 0 || high - low > end) {
        bar.setValue(bar.value() + static_cast<int>(std::floor(low)));
      } else if (high > end) {
        bar.setValue(bar.value() + static_cast<int>(std::ceil(high - end)));
      }
    };
    move(*horizontalScrollBar(), shown.left(), shown.right(), room.right());
    move(*verticalScrollBar(), shown.top(), shown.bottom(), room.bottom());
  }
  updateDescription();
  viewport()->update();
}

void ScreenshotView::setPointed(const std::optional<ArtifactRect>& frame) {
  if (pointed_ == frame) return;
  pointed_ = place_.isKnown() ? frame : std::nullopt;
  viewport()->update();
}

void ScreenshotView::setZoom(std::optional<double> zoom) {
  zoom_ = zoom;
  updateScrollBars();
  updateDescription();
  viewport()->update();
  Q_EMIT zoomChanged();
}

double ScreenshotView::zoom() const {
  if (zoom_ || !picture_) return zoom_.value_or(1);
  const QSizeF room = QSizeF(maximumViewportSize()) * devicePixelRatioF();
  const QSize size = picture_->size();
  return std::clamp(std::min(room.width() / size.width(), room.height() / size.height()), 0.001, 1.0);
}

double ScreenshotView::unitsPerPixel() const {
  return zoom() / devicePixelRatioF();
}

QRectF ScreenshotView::pictureRect() const {
  const QSizeF size = QSizeF(picture_->size()) * unitsPerPixel();
  const auto begin = [ratio = devicePixelRatioF()](double room, double length, const QScrollBar& bar) {
    // On whole screen pixels, so that a picture at 100% stays as sharp as it is.
    const double start = length > room ? -bar.value() : (room - length) / 2;
    return std::round(start * ratio) / ratio;
  };
  return {QPointF(begin(viewport()->width(), size.width(), *horizontalScrollBar()),
                  begin(viewport()->height(), size.height(), *verticalScrollBar())),
          size};
}

QRectF ScreenshotView::inViewport(const ArtifactRect& frame) const {
  const QRectF inPicture = place_.toPicture(frame);
  const double scale = unitsPerPixel();
  return {pictureRect().topLeft() + inPicture.topLeft() * scale, inPicture.size() * scale};
}

std::optional<ArtifactPoint> ScreenshotView::screenPoint(const QPointF& position) const {
  if (!picture_ || !place_.isKnown() || !pictureRect().contains(position)) return std::nullopt;
  return place_.toScreen((position - pictureRect().topLeft()) / unitsPerPixel());
}

void ScreenshotView::stepZoom(int direction) {
  if (!picture_) return;
  const double present = zoom();
  double next = present;
  if (direction > 0) {
    const auto* larger = std::ranges::find_if(zoomSteps, [&](double step) { return step > present * 1.01; });
    if (larger != zoomSteps.end()) next = *larger;
  } else {
    for (const double step : zoomSteps) {
      if (step < present * 0.99) next = step;
    }
  }
  if (next != present) zoomAround(next, QRectF(viewport()->rect()).center());
}

void ScreenshotView::zoomAround(double zoom, const QPointF& anchor) {
  const QPointF inPicture = (anchor - pictureRect().topLeft()) / unitsPerPixel();
  setZoom(zoom);
  const QPointF moved = inPicture * unitsPerPixel() - anchor;
  horizontalScrollBar()->setValue(static_cast<int>(std::lround(moved.x())));
  verticalScrollBar()->setValue(static_cast<int>(std::lround(moved.y())));
}

void ScreenshotView::updateScrollBars() {
  // Fitted there is nothing to scroll, and bars that come and go would change what fits.
  const auto policy = zoom_ ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
  setHorizontalScrollBarPolicy(policy);
  setVerticalScrollBarPolicy(policy);
  const QSizeF size = picture_ ? QSizeF(picture_->size()) * unitsPerPixel() : QSizeF();
  const auto set = [](QScrollBar& bar, double length, int room) {
    bar.setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
    bar.setPageStep(room);
  };
  set(*horizontalScrollBar(), size.width(), viewport()->width());
  set(*verticalScrollBar(), size.height(), viewport()->height());
}

void ScreenshotView::updateDescription() {
  QString words = message_;
  if (picture_) words = tr("%1 percent").arg(std::lround(zoom() * 100));
  if (lit_) words += QStringLiteral(". ") + tr("Lit: %1").arg(litWords_);
  if (words != accessibleDescription()) setAccessibleDescription(words);
}

void ScreenshotView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), palette().color(QPalette::Window));
  if (!picture_) {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap, message_);
    return;
  }
  const QRectF frame = pictureRect();
  const QImage& image = picture_->imageFor(zoom());
  painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom() < crispZoom);
  painter.drawImage(frame, image, QRectF(image.rect()));
  drawLight(painter, frame);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(viewport()->rect()).adjusted(1, 1, -1, -1));
  }
}

void ScreenshotView::drawLight(QPainter& painter, const QRectF& picture) const {
  const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
  const auto outline = [&](const QRectF& frame, Qt::PenStyle style) {
    // A light line around the accent's shows on whatever the picture has there.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 4));
    painter.drawRect(frame.adjusted(-1, -1, 1, 1));
    painter.setPen(QPen(accent, 2, style));
    painter.drawRect(frame.adjusted(-1, -1, 1, 1));
  };
  const auto visiblePart = [&](const ArtifactRect& frame) { return inViewport(frame).intersected(picture); };
  if (lit_) {
    const QRectF lit = visiblePart(*lit_);
    QPainterPath rest;
    rest.addRect(picture);
    if (!lit.isEmpty()) rest.addRect(lit);
    painter.fillPath(rest, shade);
    if (!lit.isEmpty()) outline(lit, Qt::SolidLine);
  }
  if (pointed_ && pointed_ != lit_) {
    if (const QRectF pointed = visiblePart(*pointed_); !pointed.isEmpty()) outline(pointed, Qt::DotLine);
  }
}

void ScreenshotView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateScrollBars();
  updateDescription();
  if (!zoom_) Q_EMIT zoomChanged();
}

void ScreenshotView::scrollContentsBy(int /*dx*/, int /*dy*/) {
  viewport()->update();
}

void ScreenshotView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  pressed_ = dragged_ = event->position().toPoint();
  isDragging_ = false;
}

void ScreenshotView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint position = event->position().toPoint();
  if (!event->buttons().testFlag(Qt::LeftButton)) {
    const auto point = screenPoint(event->position());
    if (point) {
      Q_EMIT pointedAt(*point);
    } else {
      Q_EMIT pointingEnded();
    }
    return;
  }
  if (!isDragging_ && (position - pressed_).manhattanLength() < QApplication::startDragDistance()) return;
  if (!isDragging_) viewport()->setCursor(Qt::ClosedHandCursor);
  isDragging_ = true;
  const QPoint moved = position - std::exchange(dragged_, position);
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
  verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void ScreenshotView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  viewport()->unsetCursor();
  if (std::exchange(isDragging_, false)) return;
  if (const auto point = screenPoint(event->position())) Q_EMIT clicked(*point);
}

bool ScreenshotView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) Q_EMIT pointingEnded();
  return QAbstractScrollArea::viewportEvent(event);
}

void ScreenshotView::wheelEvent(QWheelEvent* event) {
  if (!picture_ || !event->modifiers().testFlag(Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  const double factor = std::pow(1.0015, event->angleDelta().y());
  zoomAround(std::clamp(zoom() * factor, zoomSteps.front(), zoomSteps.back()), event->position());
  event->accept();
}

void ScreenshotView::keyPressEvent(QKeyEvent* event) {
  const bool isPlain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  switch (isPlain ? event->key() : 0) {
    case Qt::Key_Plus:
    case Qt::Key_Equal: return zoomIn();
    case Qt::Key_Minus: return zoomOut();
    case Qt::Key_0: return setZoom({});
    case Qt::Key_1: return setZoom(1);
    case Qt::Key_Home: verticalScrollBar()->setValue(0); return horizontalScrollBar()->setValue(0);
    case Qt::Key_End:
      verticalScrollBar()->setValue(verticalScrollBar()->maximum());
      return horizontalScrollBar()->setValue(horizontalScrollBar()->maximum());
    default: return QAbstractScrollArea::keyPressEvent(event);
  }
}

void ScreenshotView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) viewport()->update();
}

}  // namespace quillo
