#include "QuilloCore/Artifacts/ArtifactRepository.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "ArtifactFixtures.h"
#include "InMemoryFileSystem.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"

namespace quillo::test {
namespace {

TEST(ArtifactRepository, runsOperationsOfManyThreadsOneAtATime) {
  InMemoryFileSystem fileSystem;  // not safe for threads: an overlap would show under the thread sanitizer
  FixedWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  std::atomic<int> overlapping = 0;
  std::atomic<int> inTrash = 0;
  trash.action = [&](const std::filesystem::path& path) -> std::optional<std::filesystem::path> {
    EXPECT_EQ(1, ++overlapping);
    fileSystem.openDirectory(path.parent_path())->remove(path.filename().native());
    ++inTrash;
    --overlapping;
    return path;
  };
  ArtifactRepository repository(ArtifactStore("/library", {fileSystem, trash, clock, identifiers}, fakeProjection()));
  std::vector<std::thread> threads;
  constexpr int threadCount = 4;
  threads.reserve(threadCount);
  for (int t = 0; t < threadCount; ++t) {
    threads.emplace_back([&repository] {
      RandomUUIDGenerator ownIdentifiers;
      for (int i = 0; i < 10; ++i) {
        const UUID id = ownIdentifiers.makeUUID();
        const StoredArtifact stored = runBlocking([&] { return repository.create(makeDraft(id.text())); });
        ArtifactManifest manifest = stored.manifest;
        manifest.title = id.text();
        runBlocking([&] { return repository.update(stored, manifest); });
        EXPECT_EQ(id.text(), runBlocking([&] { return repository.load(id); }).stored.manifest.title);
        if (i % 2 == 0) runBlocking([&] { return repository.moveToTrash(id); });
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(threadCount * 5, inTrash);
  EXPECT_EQ(threadCount * 5U, runBlocking([&] { return repository.list(); }).size());
}

}  // namespace
}  // namespace quillo::test
