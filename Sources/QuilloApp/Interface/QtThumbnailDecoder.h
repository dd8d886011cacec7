#pragma once

#include "QuilloCore/Artifacts/ArtifactThumbnailCache.h"

namespace quillo {

/// Reads picture files with the toolkit's readers. A picture that is small enough already keeps its size.
class QtThumbnailDecoder final : public ThumbnailDecoding {
 public:
  std::optional<ArtifactThumbnail> decode(const std::filesystem::path& path,
                                          std::int64_t maximumPixelDimension) override;
};

}  // namespace quillo
