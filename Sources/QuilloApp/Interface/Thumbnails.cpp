#include "QuilloApp/Interface/Thumbnails.h"

#include <utility>

namespace quillo {
namespace {

QString keyOf(const QString& path, int maximumPixelDimension) {
  return path + QLatin1Char('\n') + QString::number(maximumPixelDimension);
}

/// Shares the thumbnail's pixels, which stay as long as the image.
QImage imageOf(const ArtifactThumbnail& thumbnail) {
  using Pixels = std::shared_ptr<const std::vector<std::uint8_t>>;
  auto* owner = new Pixels(thumbnail.pixels);
  return {thumbnail.pixels->data(),
          static_cast<int>(thumbnail.width),
          static_cast<int>(thumbnail.height),
          static_cast<qsizetype>(thumbnail.bytesPerRow),
          QImage::Format_RGBA8888,
          [](void* pixels) { delete static_cast<Pixels*>(pixels); },
          owner};
}

}  // namespace

QImage Thumbnails::image(const QString& path, int maximumPixelDimension) {
  const QString key = keyOf(path, maximumPixelDimension);
  if (const Picture* picture = pictures_.object(key)) return picture->image;
  if (!requested_.contains(key)) {
    requested_.insert(key);
    tasks_.start([this, path, maximumPixelDimension] { return load(path, maximumPixelDimension); });
  }
  return {};
}

Task<> Thumbnails::load(QString path, int maximumPixelDimension) {
  Task<std::optional<ArtifactThumbnail>> decoding = cache_.thumbnail(path.toStdString(), maximumPixelDimension);
  const std::optional<ArtifactThumbnail> thumbnail = co_await std::move(decoding);
  const QString key = keyOf(path, maximumPixelDimension);
  requested_.remove(key);
  auto* picture = new Picture{thumbnail ? imageOf(*thumbnail) : QImage()};
  pictures_.insert(key, picture, 1 + static_cast<int>(picture->image.sizeInBytes() / 1024));
  if (thumbnail) Q_EMIT loaded(path);
}

}  // namespace quillo
