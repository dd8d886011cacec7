#include "QuilloCore/Artifacts/ArtifactThumbnailCache.h"

#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

using Thumbnail = std::optional<ArtifactThumbnail>;
using Waiter = std::shared_ptr<PendingResult<Thumbnail>>;

struct CacheKey {
  std::string path;
  FileFingerprint fingerprint;
  std::int64_t maximumPixelDimension = 0;

  friend auto operator<=>(const CacheKey&, const CacheKey&) = default;
};

struct Entry {
  ArtifactThumbnail thumbnail;
  std::int64_t cost = 0;  ///< bytes
  std::uint64_t lastAccess = 0;
};

}  // namespace

std::optional<FileFingerprint> readFileFingerprint(const fs::path& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  const double seconds = static_cast<double>(status.st_mtim.tv_sec) + static_cast<double>(status.st_mtim.tv_nsec) / 1e9;
  return FileFingerprint{std::bit_cast<std::uint64_t>(seconds), static_cast<std::uint64_t>(status.st_size)};
}

/// The lock is held for looking up and changing the tables only, never while a file is read or a waiter goes on.
class ArtifactThumbnailCache::Core : public std::enable_shared_from_this<Core> {
 public:
  Core(ThumbnailDecoding& decoder, WorkerPool& pool, FingerprintReader readFingerprint)
      : decoder_(decoder), pool_(pool), readFingerprint_(std::move(readFingerprint)) {}

  void request(const fs::path& path, std::int64_t maximumPixelDimension, const Waiter& waiter) {
    const auto fingerprint = readFingerprint_(path);
    if (!fingerprint) {
      waiter->resolve(Thumbnail());
      return;
    }
    CacheKey key{path.string(), *fingerprint, maximumPixelDimension};
    Thumbnail hit;
    {
      const std::scoped_lock guard(lock_);
      if (const auto entry = entries_.find(key); entry != entries_.end()) {
        entry->second.lastAccess = ++accessCounter_;
        hit = entry->second.thumbnail;
      } else {
        std::vector<Waiter>& waiters = inFlight_[key];
        waiters.push_back(waiter);
        if (waiters.size() > 1) return;
      }
    }
    if (hit) {
      waiter->resolve(std::move(hit));
      return;
    }
    pool_.makeExecutor().queue()->post([core = shared_from_this(), key = std::move(key)] { core->decode(key); });
  }

  void removeEntries(const std::string& path) {
    const std::scoped_lock guard(lock_);
    removeIf([&](const CacheKey& key) { return key.path == path; });
  }

  std::size_t entryCount() const {
    const std::scoped_lock guard(lock_);
    return entries_.size();
  }

  std::int64_t decodedByteCount() const {
    const std::scoped_lock guard(lock_);
    return decodedByteCount_;
  }

 private:
  void decode(const CacheKey& key) {
    Thumbnail thumbnail;
    try {
      thumbnail = decoder_.decode(key.path, key.maximumPixelDimension);
    } catch (const std::exception&) {
      // A picture that cannot be shown is none.
    }
    // A file that has changed meanwhile may have been read in part, or under the newer fingerprint's name.
    const auto current = readFingerprint_(key.path);
    std::vector<Waiter> waiters;
    {
      const std::scoped_lock guard(lock_);
      waiters = std::move(inFlight_[key]);
      inFlight_.erase(key);
      removeIf([&](const CacheKey& other) { return other.path == key.path && other.fingerprint != current; });
      if (thumbnail && current == key.fingerprint) insert(key, *thumbnail);
    }
    for (const Waiter& waiter : waiters) waiter->resolve(thumbnail);
  }

  void insert(const CacheKey& key, const ArtifactThumbnail& thumbnail) {
    const std::int64_t cost = thumbnail.bytesPerRow * thumbnail.height;
    if (cost > decodedByteLimit) return;
    removeIf([&](const CacheKey& other) { return other == key; });
    entries_[key] = {thumbnail, cost, ++accessCounter_};
    decodedByteCount_ += cost;
    while (decodedByteCount_ > decodedByteLimit || entries_.size() > entryLimit) {
      const auto oldest =
          std::ranges::min_element(entries_, {}, [](const auto& keyAndEntry) { return keyAndEntry.second.lastAccess; });
      decodedByteCount_ -= oldest->second.cost;
      entries_.erase(oldest);
    }
  }

  template <class Condition>
  void removeIf(Condition isUnwanted) {
    std::erase_if(entries_, [&](const auto& keyAndEntry) {
      if (!isUnwanted(keyAndEntry.first)) return false;
      decodedByteCount_ -= keyAndEntry.second.cost;
      return true;
    });
  }

  ThumbnailDecoding& decoder_;
  WorkerPool& pool_;
  FingerprintReader readFingerprint_;
  mutable std::mutex lock_;
  std::map<CacheKey, Entry> entries_;
  std::map<CacheKey, std::vector<Waiter>> inFlight_;
  std::int64_t decodedByteCount_ = 0;
  std::uint64_t accessCounter_ = 0;
};

ArtifactThumbnailCache::ArtifactThumbnailCache(ThumbnailDecoding& decoder, WorkerPool& pool,
                                               FingerprintReader readFingerprint)
    : core_(std::make_shared<Core>(decoder, pool, std::move(readFingerprint))) {}

Task<std::optional<ArtifactThumbnail>> ArtifactThumbnailCache::thumbnail(const fs::path& path,
                                                                         std::int64_t maximumPixelDimension) {
  auto waiter = std::make_shared<PendingResult<Thumbnail>>();
  core_->request(path, maximumPixelDimension, waiter);
  return waitFor(std::move(waiter));
}

void ArtifactThumbnailCache::removeEntries(const fs::path& path) {
  core_->removeEntries(path.string());
}

std::size_t ArtifactThumbnailCache::entryCount() const {
  return core_->entryCount();
}

std::int64_t ArtifactThumbnailCache::decodedByteCount() const {
  return core_->decodedByteCount();
}

}  // namespace quillo
