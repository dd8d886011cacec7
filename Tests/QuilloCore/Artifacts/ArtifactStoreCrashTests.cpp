#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "InMemoryFileSystem.h"
#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo::test {
namespace {

const std::filesystem::path root = "/home/user/share/Quillo/Artifacts";

/// A store on a file system in memory.
struct Library {
  explicit Library(InMemoryFileSystem system) : fileSystem(std::move(system)) { fileSystem.now = clock.present; }
  Library() : Library(InMemoryFileSystem()) {}

  void passTime(std::chrono::seconds duration) {
    clock.present += duration;
    fileSystem.now = clock.present;
  }

  /// Every artifact whole, as load sees it, newest first.
  std::vector<LoadedArtifact> contents() {
    std::vector<LoadedArtifact> result;
    for (const auto& stored : store.list()) result.push_back(store.load(stored.manifest.id));
    return result;
  }

  InMemoryFileSystem fileSystem;
  FixedWallClock clock;
  CountingUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store{root, {fileSystem, trash, clock, identifiers}, fakeProjection()};
};

using Operation = std::function<void(ArtifactStore&)>;

void createSecond(ArtifactStore& store) {
  store.create(makeDraft(secondID));
}

void editFirst(ArtifactStore& store) {
  const StoredArtifact stored = store.list().back();
  ArtifactManifest manifest = stored.manifest;
  manifest.title = "Edited";
  store.update(stored, manifest);
}

struct Scenario {
  const char* label;
  bool hasFirst;
  Operation operation;
};

const std::vector<Scenario> scenarios = {
    {"create in a new library", false, createSecond},
    {"create beside another", true, createSecond},
    {"edit", true, editFirst},
};

void arrange(Library& library, const Scenario& scenario) {
  if (!scenario.hasFirst) return;
  ContextArtifactDraft first = makeDraft(firstID);
  first.manifest.createdAt -= std::chrono::hours{1};
  library.store.create(first);
}

std::vector<LoadedArtifact> contentsAfter(const Scenario& scenario) {
  Library library;
  arrange(library, scenario);
  scenario.operation(library.store);
  return library.contents();
}

std::vector<LoadedArtifact> contentsBefore(const Scenario& scenario) {
  Library library;
  arrange(library, scenario);
  library.store.prepare();
  return library.contents();
}

/// What survives has no half bundle, and an hour later no trace of the attempt.
void expectOldOrNew(InMemoryFileSystem survived, const Scenario& scenario, bool mustBeNew, const std::string& label) {
  Library library(std::move(survived));
  library.store.prepare();
  const auto contents = library.contents();
  const bool isNew = contents == contentsAfter(scenario);
  EXPECT_TRUE(isNew || (!mustBeNew && contents == contentsBefore(scenario))) << label;
  EXPECT_EQ(contents.size(), library.store.bundleNames().size()) << label;

  library.passTime(std::chrono::seconds{3'601});
  library.store.prepare();
  EXPECT_EQ(contents.size(), library.fileSystem.openDirectory(root)->entries().size()) << label;
}

TEST(ArtifactStoreCrash, atAnyInstantLeavesTheOldStateOrTheNew) {
  for (const Scenario& scenario : scenarios) {
    bool wasInterrupted = true;
    for (int step = 1; wasInterrupted; ++step) {
      Library library;
      arrange(library, scenario);
      library.fileSystem.failAt(step, 0);
      wasInterrupted = false;
      try {
        scenario.operation(library.store);
      } catch (const PowerCut&) {
        wasInterrupted = true;
      }
      const std::string label = std::string(scenario.label) + ", step " + std::to_string(step);
      expectOldOrNew(library.fileSystem.afterProcessDeath(), scenario, !wasInterrupted, label + ", process killed");
      for (std::uint64_t seed = 0; seed < 40; ++seed) {
        expectOldOrNew(library.fileSystem.afterPowerCut(seed), scenario, !wasInterrupted,
                       label + ", power cut " + std::to_string(seed));
      }
    }
  }
}

TEST(ArtifactStoreCrash, aFailingStepLeavesNoTrace) {
  for (const Scenario& scenario : scenarios) {
    const auto before = contentsBefore(scenario);
    for (const int errorNumber : {ENOSPC, EACCES, EIO}) {
      bool hasFailed = true;
      for (int step = 1; hasFailed; ++step) {
        Library library;
        arrange(library, scenario);
        library.store.prepare();
        library.fileSystem.failAt(step, errorNumber);
        hasFailed = false;
        try {
          scenario.operation(library.store);
        } catch (const FileSystemError& error) {
          hasFailed = true;
          EXPECT_TRUE(error.isSystemFailure(errorNumber));
        }
        const std::string label = std::string(scenario.label) + ", step " + std::to_string(step);
        if (!hasFailed) break;
        const auto contents = library.contents();
        // When only the last sync of an edit fails, the edit is in place and may stay.
        EXPECT_TRUE(contents == before || contents == contentsAfter(scenario)) << label;
        EXPECT_EQ(before.size(), contents.size()) << label;
        EXPECT_EQ(before.size(), library.fileSystem.openDirectory(root)->entries().size()) << label;
        scenario.operation(library.store);
        EXPECT_EQ(contentsAfter(scenario), library.contents()) << label;
      }
    }
  }
}

TEST(ArtifactStoreCrash, editsRemoveTheDraftsOfInterruptedOnes) {
  Library library;
  arrange(library, scenarios.back());
  library.fileSystem.failAt(4, 0);
  EXPECT_THROW(editFirst(library.store), PowerCut);
  Library survived(library.fileSystem.afterProcessDeath());
  const auto fileCount = [&] {
    return survived.fileSystem.openDirectory(survived.store.list().front().bundlePath)->entries().size();
  };
  EXPECT_EQ(5U, fileCount());
  editFirst(survived.store);
  EXPECT_EQ(5U, fileCount());
  survived.passTime(std::chrono::seconds{3'601});
  editFirst(survived.store);
  EXPECT_EQ(4U, fileCount());
}

}  // namespace
}  // namespace quillo::test
