#include "QuilloApp/Inspector/CapturedPicture.h"

#include <QByteArray>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace quillo {
namespace {

constexpr int smallestSide = 64;  ///< pixels; nothing is drawn from a smaller picture

}  // namespace

std::shared_ptr<const CapturedPicture> CapturedPicture::decode(std::string_view png) {
  QImage image = QImage::fromData(QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size())));
  return image.isNull() ? nullptr : std::make_shared<const CapturedPicture>(std::move(image));
}

CapturedPicture::CapturedPicture(QImage image) {
  const auto format = image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
  levels_.push_back(std::move(image).convertToFormat(format));
  while (std::min(levels_.back().width(), levels_.back().height()) >= 2 * smallestSide) {
    const QImage& last = levels_.back();
    levels_.push_back(
        last.scaled((last.width() + 1) / 2, (last.height() + 1) / 2, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
}

const QImage& CapturedPicture::imageFor(double scale) const {
  std::size_t level = 0;
  while (level + 1 < levels_.size() && levels_[level + 1].width() >= scale * size().width()) ++level;
  return levels_[level];
}

PicturePlace::PicturePlace(const ArtifactRect& frame, QSize pixels) {
  if (!frame.isFinite() || frame.width <= 0 || frame.height <= 0 || pixels.isEmpty()) return;
  originX_ = frame.x;
  originY_ = frame.y;
  scaleX_ = pixels.width() / frame.width;
  scaleY_ = pixels.height() / frame.height;
}

QRectF PicturePlace::toPicture(const ArtifactRect& onScreen) const {
  return {(onScreen.x - originX_) * scaleX_, (onScreen.y - originY_) * scaleY_, onScreen.width * scaleX_,
          onScreen.height * scaleY_};
}

ArtifactPoint PicturePlace::toScreen(const QPointF& inPicture) const {
  return {.x = originX_ + inPicture.x() / scaleX_, .y = originY_ + inPicture.y() / scaleY_};
}

}  // namespace quillo
