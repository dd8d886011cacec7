#include "QuilloCore/Artifacts/ArtifactThumbnailCache.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

/// Makes pictures of a given cost and counts how often; can be held back.
class FakeDecoder final : public ThumbnailDecoding {
 public:
  std::optional<ArtifactThumbnail> decode(const std::filesystem::path& path, std::int64_t dimension) override {
    std::unique_lock guard(lock_);
    ++counts[path.string()];
    begun_.notify_all();
    open_.wait(guard, [&] { return !isHeld_; });
    if (path == "broken") throw std::runtime_error("no picture");
    if (path == "none") return std::nullopt;
    return ArtifactThumbnail{dimension, 1, cost, nullptr};
  }

  void hold() {
    const std::scoped_lock guard(lock_);
    isHeld_ = true;
  }
  void release() {
    const std::scoped_lock guard(lock_);
    isHeld_ = false;
    open_.notify_all();
  }
  void waitUntilBegun(const std::string& path) {
    std::unique_lock guard(lock_);
    begun_.wait(guard, [&] { return counts[path] > 0; });
  }

  std::map<std::string, int> counts;
  std::int64_t cost = 1;

 private:
  std::mutex lock_;
  std::condition_variable open_;
  std::condition_variable begun_;
  bool isHeld_ = false;
};

class ArtifactThumbnailCacheTest : public ::testing::Test {
 protected:
  std::optional<ArtifactThumbnail> request(const std::string& path, std::int64_t dimension = 64) {
    return runBlocking([&] { return cache.thumbnail(path, dimension); });
  }

  FakeDecoder decoder;
  std::atomic<std::uint64_t> version = 1;
  WorkerPool pool;
  ArtifactThumbnailCache cache{decoder, pool, [this](const std::filesystem::path& path) {
                                 return path == "missing" ? std::nullopt : std::optional(FileFingerprint{version, 7});
                               }};
};

TEST_F(ArtifactThumbnailCacheTest, decodesEachSizeOnceUntilTheFileChanges) {
  const ArtifactThumbnail expected{64, 1, 1, nullptr};
  EXPECT_EQ(expected, request("a"));
  EXPECT_EQ(expected, request("a"));
  EXPECT_EQ(1, decoder.counts["a"]);
  request("a", 128);
  EXPECT_EQ(2, decoder.counts["a"]);
  EXPECT_EQ(2U, cache.entryCount());
  version = 2;
  request("a");
  EXPECT_EQ(3, decoder.counts["a"]);
  EXPECT_EQ(1U, cache.entryCount());
  request("b");
  cache.removeEntries("a");
  EXPECT_EQ(1U, cache.entryCount());
  EXPECT_EQ(1, cache.decodedByteCount());
}

TEST_F(ArtifactThumbnailCacheTest, keepsNoPictureOfWhatHasNone) {
  for (const char* path : {"missing", "none", "broken"}) {
    EXPECT_EQ(std::nullopt, request(path)) << path;
    EXPECT_EQ(std::nullopt, request(path)) << path;
  }
  EXPECT_EQ(0, decoder.counts["missing"]);
  EXPECT_EQ(2, decoder.counts["none"]);
  EXPECT_EQ(0U, cache.entryCount());
}

TEST_F(ArtifactThumbnailCacheTest, requestsAtTheSameTimeShareOneDecode) {
  decoder.hold();
  std::vector<Task<std::optional<ArtifactThumbnail>>> tasks;
  for (int i = 0; i < 5; ++i) tasks.push_back(cache.thumbnail("a", 64));
  decoder.release();
  for (auto& task : tasks) EXPECT_TRUE(runBlocking([&] { return std::move(task); }));
  EXPECT_EQ(1, decoder.counts["a"]);
}

TEST_F(ArtifactThumbnailCacheTest, doesNotKeepWhatWasReadWhileTheFileChanged) {
  decoder.hold();
  auto task = cache.thumbnail("a", 64);
  decoder.waitUntilBegun("a");
  version = 2;
  decoder.release();
  EXPECT_TRUE(runBlocking([&] { return std::move(task); }));
  EXPECT_EQ(0U, cache.entryCount());
  request("a");
  EXPECT_EQ(2, decoder.counts["a"]);
}

TEST_F(ArtifactThumbnailCacheTest, staysWithinItsBudgets) {
  for (int i = 0; i < 160; ++i) request(std::to_string(i));
  request("0");  // used last but one
  request("new");
  EXPECT_EQ(160U, cache.entryCount());
  request("0");
  EXPECT_EQ(1, decoder.counts["0"]);
  request("1");
  EXPECT_EQ(2, decoder.counts["1"]);

  decoder.cost = ArtifactThumbnailCache::decodedByteLimit;
  request("large");
  EXPECT_EQ(1U, cache.entryCount());
  request("large");
  EXPECT_EQ(1, decoder.counts["large"]);
  decoder.cost = ArtifactThumbnailCache::decodedByteLimit + 1;
  EXPECT_TRUE(request("too large"));
  EXPECT_TRUE(request("too large"));
  EXPECT_EQ(2, decoder.counts["too large"]);
  EXPECT_EQ(ArtifactThumbnailCache::decodedByteLimit, cache.decodedByteCount());
}

TEST(FileFingerprint, changesWithTheSizeAndTheTimeOfAFile) {
  const TemporaryDirectory directory;
  const auto file = directory.path() / "screenshot.png";
  EXPECT_EQ(std::nullopt, readFileFingerprint(file));
  writeFile(file, "12");
  const auto first = readFileFingerprint(file);
  writeFile(file, "123");
  const auto second = readFileFingerprint(file);
  std::filesystem::last_write_time(file, std::chrono::file_clock::now() - std::chrono::hours{1});
  EXPECT_NE(first, second);
  EXPECT_NE(second, readFileFingerprint(file));
  EXPECT_EQ(3U, second->byteCount);
}

}  // namespace
}  // namespace quillo::test
