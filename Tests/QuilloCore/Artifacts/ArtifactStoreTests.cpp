#include "QuilloCore/Artifacts/ArtifactStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "ArtifactStoreFixture.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;
using Error = ArtifactRepositoryError;
using ::testing::ElementsAre;

const UUID first = *UUID::parse(firstID);

TEST_F(ArtifactStoreTest, keepsADraftAndLoadsItBack) {
  ContextArtifactDraft draft = makeDraft();
  draft.manifest.schemaVersion = 1;
  draft.manifest.screenshotFilename = "elsewhere.png";
  draft.manifest.accessibilityFilename = "../snapshot.json";
  draft.manifest.evidenceFilename.reset();
  draft.manifest.observationFilename.reset();
  draft.manifest.contextProjectionVersion.reset();

  const StoredArtifact stored = store.create(draft);
  EXPECT_EQ((StoredArtifact{makeManifest(), firstBundle()}), stored);
  EXPECT_THAT(namesInRoot(), ElementsAre(std::string(firstID) + ".quillo"));
  EXPECT_EQ(encodeJson(makeManifest(), JsonStyle::prettyPrinted), readFile(firstBundle() / "manifest.json"));
  EXPECT_EQ(draft.screenshotPNG, readFile(stored.screenshotPath()));
  EXPECT_EQ(CanonicalAccessibilityEvidenceCodec::encodeSnapshot(draft.accessibilitySnapshot),
            readFile(*stored.evidencePath()));
  EXPECT_EQ(encodeJson(draft.interfaceObservation, JsonStyle::prettyPrinted), readFile(*stored.observationPath()));
  EXPECT_EQ(std::nullopt, stored.accessibilityPath());

  const LoadedArtifact loaded = store.load(first);
  EXPECT_EQ((LoadedArtifact{stored, draft.screenshotPNG, draft.accessibilitySnapshot, draft.interfaceObservation}),
            loaded);
}

TEST_F(ArtifactStoreTest, isClosedToOtherUsersWhateverTheUmask) {
  for (const mode_t umaskOfProcess : {0U, 0777U, 0022U}) {
    const mode_t before = ::umask(umaskOfProcess);
    const StoredArtifact stored = store.create(makeDraft());
    ArtifactManifest manifest = stored.manifest;
    manifest.title = "Edited";
    store.update(stored, manifest);
    ::umask(before);
    const auto mode = [](const fs::path& path) {
      struct stat status{};
      EXPECT_EQ(0, ::lstat(path.c_str(), &status));
      return status.st_mode & 0777U;
    };
    for (const fs::path& path : {root().parent_path(), root(), firstBundle()}) EXPECT_EQ(0700U, mode(path)) << path;
    for (const auto& entry : fs::directory_iterator(firstBundle())) EXPECT_EQ(0600U, mode(entry.path())) << entry;
    fs::remove_all(root().parent_path());
  }
}

TEST_F(ArtifactStoreTest, refusesDraftsOfOtherVersionsAndSecondOnesOfAnIdentifier) {
  ContextArtifactDraft draft = makeDraft();
  draft.accessibilitySnapshot.schemaVersion = 3;
  EXPECT_THROW(store.create(draft), Error);
  draft = makeDraft();
  draft.interfaceObservation.schemaVersion = 5;
  EXPECT_THROW(store.create(draft), Error);
  draft = makeDraft();
  draft.accessibilitySnapshot.nodes.push_back(draft.accessibilitySnapshot.nodes[0]);
  EXPECT_THROW(store.create(draft), CanonicalAccessibilityEvidenceCodecError);

  store.create(makeDraft());
  const std::string manifest = readFile(firstBundle() / "manifest.json");
  draft = makeDraft();
  draft.manifest.title = "Another";
  try {
    store.create(draft);
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_EQ(Error(Error::ArtifactAlreadyExists{first}), error);
  }
  EXPECT_EQ(manifest, readFile(firstBundle() / "manifest.json"));
  EXPECT_EQ(1U, namesInRoot().size());

  fs::create_symlink("nowhere", root() / (std::string(secondID) + ".quillo"));
  EXPECT_THROW(store.create(makeDraft(secondID)), Error);
}

TEST_F(ArtifactStoreTest, anInterruptedCreateLeavesNothing) {
  struct Interruption {};
  store.prepare();
  int step = 0;
  for (bool wasInterrupted = true; wasInterrupted;) {
    EXPECT_THAT(namesInRoot(), ElementsAre());
    ++step;
    wasInterrupted = false;
    try {
      store.create(makeDraft(), [&, left = step]() mutable {
        if (--left == 0) throw Interruption();
      });
    } catch (const Interruption&) {
      wasInterrupted = true;
    }
  }
  EXPECT_EQ(7, step);
  EXPECT_EQ("no error", errorOfLoading());
}

TEST_F(ArtifactStoreTest, listsNewestFirstAndLeavesOutWhatIsDamaged) {
  EXPECT_THROW(store.list(), FileSystemError);
  ContextArtifactDraft newer = makeDraft("99000000-0000-4000-8000-000000000000");
  newer.manifest.createdAt += std::chrono::seconds{1};
  store.create(makeDraft(secondID));
  store.create(makeDraft(firstID));
  store.create(newer);
  fs::create_directory(root() / "X.quillo");
  writeFile(root() / "Y.quillo", "a file");
  writeFile(root() / "Z.quillo" / "manifest.json", "{\"schemaVersion\":7}");
  fs::create_directory_symlink(firstBundle(), root() / "L.quillo");
  fs::copy(firstBundle(), root() / ".hidden.quillo");
  fs::copy(firstBundle(), root() / "copy.Quillo");
  EXPECT_THAT(listed(), ElementsAre("99000000-0000-4000-8000-000000000000", firstID, secondID));
  EXPECT_THAT(store.bundleNames(),
              ElementsAre(std::string(firstID) + ".quillo", "99000000-0000-4000-8000-000000000000.quillo",
                          std::string(secondID) + ".quillo", "X.quillo", "Z.quillo"));
  for (const auto& stored : store.list(ListingDetail::withoutContextTexts)) EXPECT_EQ("", stored.manifest.contextText);
}

TEST_F(ArtifactStoreTest, removesStagingDirectoriesAfterAnHour) {
  const std::string staging = std::string(".") + firstID + "." + secondID + ".tmp";
  struct Case {
    std::string name;
    int minutes;
    bool isRemoved;
  };
  const std::vector<Case> cases = {
      {staging, 61, true},
      {std::string(".") + secondID + "." + secondID + ".tmp", 59, false},
      {std::string(".") + firstID + ".tmp", 61, false},
      {std::string(".") + firstID + "." + firstID + "." + secondID + ".tmp", 61, false},
      {std::string(".") + firstID + "." + firstID + ".tmp.old", 61, false},
      {std::string("x") + firstID + "." + firstID + ".tmp", 61, false},
      {".x." + std::string(firstID) + ".tmp", 61, false},
      {".tmp", 61, false},
  };
  const auto now = std::chrono::file_clock::now();
  clock.present = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
  for (const Case& c : cases) {
    writeFile(root() / c.name / "deep" / "file", "x");
    fs::create_directory_symlink(directory.path(), root() / c.name / "link");
    fs::last_write_time(root() / c.name, now - std::chrono::minutes{c.minutes});
  }
  const fs::path link = root() / (std::string(".") + secondID + "." + firstID + ".tmp");
  fs::create_directory_symlink(directory.path(), link);
  const fs::path file = root() / (std::string(".") + firstID + "." + firstID + ".tmp");
  writeFile(file, "not a directory");
  fs::last_write_time(file, now - std::chrono::hours{2});
  store.prepare();
  for (const Case& c : cases) EXPECT_EQ(!c.isRemoved, fs::exists(root() / c.name)) << c.name;
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(ArtifactStoreTest, editsEverythingButTheFileNames) {
  const StoredArtifact stored = store.create(makeDraft());
  ArtifactManifest edited = stored.manifest;
  edited.title = "New\ntitle";
  edited.annotations = "";
  edited.tags = {"x"};
  edited.modifiedAt += std::chrono::hours{1};
  edited.screenshotFilename = "other.png";
  edited.accessibilityFilename = "../a";
  edited.evidenceFilename.reset();
  edited.observationFilename = "manifest.json";
  ArtifactManifest expected = stored.manifest;
  expected.title = edited.title;
  expected.annotations = edited.annotations;
  expected.tags = edited.tags;
  expected.modifiedAt = edited.modifiedAt;
  EXPECT_EQ((StoredArtifact{expected, firstBundle()}), store.update(stored, edited));
  EXPECT_THAT(store.list(), ElementsAre(StoredArtifact{expected, firstBundle()}));
  EXPECT_EQ(4, std::distance(fs::directory_iterator(firstBundle()), fs::directory_iterator()));

  edited.schemaVersion = 9;
  EXPECT_THROW(store.update(stored, edited), Error);
  fs::remove_all(firstBundle());
  EXPECT_THROW(store.update(stored, expected), Error);
}

TEST_F(ArtifactStoreTest, movesBundlesToTheTrashOrSaysWhyNot) {
  const auto errorOf = [&] {
    try {
      store.moveToTrash(first);
    } catch (const Error& error) {
      return error;
    }
    return Error(Error::UnsupportedSchema{0});
  };
  EXPECT_EQ(Error(Error::ArtifactNotFound{first}), errorOf());
  store.create(makeDraft());
  trash.action = [](const fs::path&) -> std::optional<fs::path> { throw TrashError("there is no Trash"); };
  EXPECT_EQ(Error(Error::CouldNotMoveArtifactToTrash{first, "there is no Trash"}), errorOf());
  trash.action = [](const fs::path&) { return std::nullopt; };
  EXPECT_EQ(Error(Error::CouldNotMoveArtifactToTrash{first, "the bundle remained in its original location"}),
            errorOf());
  fs::path newPath = directory.path() / "Trash";
  trash.action = [&](const fs::path& path) {
    fs::rename(path, newPath);
    return std::optional(newPath);
  };
  EXPECT_EQ(newPath, store.moveToTrash(first));
  EXPECT_TRUE(fs::exists(newPath / "manifest.json"));
}

}  // namespace
}  // namespace quillo::test
