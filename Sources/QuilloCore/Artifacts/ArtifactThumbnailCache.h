#pragma once

#include <compare>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/WorkerPool.h"

namespace quillo {

/// A picture, scaled down for a list. Copies share the pixels.
struct ArtifactThumbnail {
  std::int64_t width = 0;   ///< pixels
  std::int64_t height = 0;  ///< pixels
  std::int64_t bytesPerRow = 0;
  std::shared_ptr<const std::vector<std::uint8_t>> pixels;  ///< red, green, blue, alpha; rows from the top

  friend bool operator==(const ArtifactThumbnail&, const ArtifactThumbnail&) = default;
};

/// Reads picture files.
class ThumbnailDecoding {
 public:
  virtual ~ThumbnailDecoding() = default;

  /// The picture with its orientation applied, its longer side at most `maximumPixelDimension`; nothing when it cannot
  /// be read. Blocking, called from several threads at once.
  virtual std::optional<ArtifactThumbnail> decode(const std::filesystem::path& path,
                                                  std::int64_t maximumPixelDimension) = 0;
};

/// Tells apart what a file held at two moments.
struct FileFingerprint {
  std::uint64_t modificationDateBits = 0;  ///< of the seconds as a double
  std::uint64_t byteCount = 0;

  friend auto operator<=>(const FileFingerprint&, const FileFingerprint&) = default;
};

/// Nothing when the file cannot be examined.
std::optional<FileFingerprint> readFileFingerprint(const std::filesystem::path& path);

/// Keeps the thumbnails that were used last, within a budget of bytes and of entries. Requests for the same picture at
/// the same time share one decode; a file that has changed is decoded again. May be used from any thread; decodes run
/// on the pool, which with the decoder must outlive the cache's tasks.
class ArtifactThumbnailCache {
 public:
  static constexpr std::int64_t decodedByteLimit = 50'331'648;  // 48 MiB
  static constexpr std::size_t entryLimit = 160;

  using FingerprintReader = std::function<std::optional<FileFingerprint>(const std::filesystem::path&)>;

  ArtifactThumbnailCache(ThumbnailDecoding& decoder, WorkerPool& pool,
                         FingerprintReader readFingerprint = readFileFingerprint);

  /// Nothing when there is no picture. A caller that is cancelled is released; the decode goes on for the others.
  Task<std::optional<ArtifactThumbnail>> thumbnail(const std::filesystem::path& path,
                                                   std::int64_t maximumPixelDimension);

  /// Forgets every thumbnail of the file.
  void removeEntries(const std::filesystem::path& path);

  std::size_t entryCount() const;
  std::int64_t decodedByteCount() const;

 private:
  class Core;
  std::shared_ptr<Core> core_;
};

}  // namespace quillo
