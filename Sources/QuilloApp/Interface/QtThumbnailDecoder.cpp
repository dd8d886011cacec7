#include "QuilloApp/Interface/QtThumbnailDecoder.h"

#include <QImage>
#include <QImageReader>
#include <algorithm>

namespace quillo {

std::optional<ArtifactThumbnail> QtThumbnailDecoder::decode(const std::filesystem::path& path,
                                                            std::int64_t maximumPixelDimension) {
  QImageReader reader(QString::fromStdString(path.string()));
  reader.setAutoTransform(true);
  QImage image = reader.read();
  if (image.isNull()) return std::nullopt;
  const int limit = static_cast<int>(std::clamp<std::int64_t>(maximumPixelDimension, 1, 1 << 15));
  if (std::max(image.width(), image.height()) > limit)
    image = image.scaled(limit, limit, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  image = std::move(image).convertToFormat(QImage::Format_RGBA8888);

  ArtifactThumbnail thumbnail;
  thumbnail.width = image.width();
  thumbnail.height = image.height();
  thumbnail.bytesPerRow = image.bytesPerLine();
  thumbnail.pixels =
      std::make_shared<const std::vector<std::uint8_t>>(image.constBits(), image.constBits() + image.sizeInBytes());
  return thumbnail;
}

}  // namespace quillo
