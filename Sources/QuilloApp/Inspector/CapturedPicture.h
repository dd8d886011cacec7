#pragma once

#include <QImage>
#include <QRectF>
#include <QSize>
#include <memory>
#include <string_view>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A decoded screenshot, and the same halved again and again, so that drawing it at any size takes no longer than what
/// is drawn is large. Immutable; made on any thread.
class CapturedPicture {
 public:
  /// Null when the bytes are no picture that can be read.
  static std::shared_ptr<const CapturedPicture> decode(std::string_view png);

  explicit CapturedPicture(QImage image);

  QSize size() const { return levels_.front().size(); }
  /// The smallest that has at least `scale` of the picture's pixels a side.
  const QImage& imageFor(double scale) const;

 private:
  std::vector<QImage> levels_;  ///< never empty
};

/// Where a picture lies on the screen that it was taken of.
class PicturePlace {
 public:
  PicturePlace() = default;
  /// `frame` in screen points; one without an area places nothing.
  PicturePlace(const ArtifactRect& frame, QSize pixels);

  bool isKnown() const { return scaleX_ > 0 && scaleY_ > 0; }
  QRectF toPicture(const ArtifactRect& onScreen) const;    ///< in picture pixels
  ArtifactPoint toScreen(const QPointF& inPicture) const;  ///< in screen points

 private:
  double originX_ = 0;
  double originY_ = 0;
  double scaleX_ = 0;  ///< picture pixels a screen point
  double scaleY_ = 0;
};

}  // namespace quillo
