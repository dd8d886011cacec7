#pragma once

#include <QAbstractScrollArea>
#include <QPoint>
#include <QRectF>
#include <QString>
#include <memory>
#include <optional>

#include "QuilloApp/Inspector/CapturedPicture.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A screenshot to look at closely: as large as fits or at a zoom, moved by dragging and by keys, with one rectangle of
/// the captured window lit and another outlined. Never mirrored. Rectangles and points are in screen points.
class ScreenshotView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit ScreenshotView(QWidget* parent = nullptr);

  /// Null, with the reason, for none. Begins again with the picture fitted and nothing lit.
  void setPicture(std::shared_ptr<const CapturedPicture> picture, const PicturePlace& place);
  void showMessage(const QString& message);

  /// Lights the rectangle and moves to it; the words say what it shows.
  void setLit(const std::optional<ArtifactRect>& frame, const QString& words);
  /// What the pointer is at, here or in the ledger.
  void setPointed(const std::optional<ArtifactRect>& frame);
  bool isLit() const { return lit_.has_value(); }

  /// Screen pixels a picture pixel; none is as large as fits, but never larger than 1.
  void setZoom(std::optional<double> zoom);
  void zoomIn() { stepZoom(1); }
  void zoomOut() { stepZoom(-1); }
  bool isFitted() const { return !zoom_; }
  bool hasPicture() const { return picture_ != nullptr; }
  double zoom() const;  ///< the present one, also when it follows from the size

  QSize sizeHint() const override { return {400, 280}; }
  QSize minimumSizeHint() const override { return {160, 96}; }

 Q_SIGNALS:
  void pointedAt(const quillo::ArtifactPoint& point);
  void pointingEnded();
  void clicked(const quillo::ArtifactPoint& point);
  void zoomChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  double unitsPerPixel() const;  ///< of the picture, in the widget's own units
  QRectF pictureRect() const;    ///< in the viewport
  QRectF inViewport(const ArtifactRect& frame) const;
  std::optional<ArtifactPoint> screenPoint(const QPointF& position) const;
  void stepZoom(int direction);
  void zoomAround(double zoom, const QPointF& anchor);
  void updateScrollBars();
  void updateDescription();
  void drawLight(QPainter& painter, const QRectF& picture) const;

  std::shared_ptr<const CapturedPicture> picture_;
  PicturePlace place_;
  QString message_;
  std::optional<ArtifactRect> lit_;
  QString litWords_;
  std::optional<ArtifactRect> pointed_;
  std::optional<double> zoom_;
  QPoint pressed_;
  QPoint dragged_;
  bool isDragging_ = false;
};

}  // namespace quillo
