#include "QuilloCore/Artifacts/ArtifactStore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "QuilloCore/Artifacts/ArtifactFileError.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/JsonCorruption.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;
using Error = ArtifactRepositoryError;
using ::testing::ElementsAre;

const UUID first = *UUID::parse(firstID);
const UUID second = *UUID::parse(secondID);

/// A store in a directory of its own on the real file system.
class ArtifactStoreTest : public ::testing::Test {
 protected:
  fs::path root() const { return directory.path() / "share" / "Artifacts"; }
  fs::path firstBundle() const { return root() / (std::string(firstID) + ".quillo"); }

  /// Writes the manifest of the first bundle anew, as another program could.
  void rewriteManifest(const std::function<void(ArtifactManifest&)>& change) {
    ArtifactManifest manifest = makeManifest();
    change(manifest);
    writeFile(firstBundle() / "manifest.json", encodeJson(manifest, JsonStyle::prettyPrinted));
  }

  std::vector<std::string> listed() {
    std::vector<std::string> ids;
    for (const auto& stored : store.list()) ids.push_back(stored.manifest.id.text());
    return ids;
  }

  std::string errorOfLoading() {
    try {
      store.load(first);
    } catch (const std::exception& error) {
      return error.what();
    }
    return "no error";
  }

  std::vector<std::string> namesInRoot() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(root())) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  TemporaryDirectory directory;
  PosixFileSystem fileSystem;
  FixedWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store{root(), {fileSystem, trash, clock, identifiers}, fakeProjection()};
};

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

TEST_F(ArtifactStoreTest, readsOlderLayoutsAndRebuildsOlderObservations) {
  const ContextArtifactDraft draft = makeDraft();
  const std::string snapshot = encodeJson(draft.accessibilitySnapshot, JsonStyle::compact);
  const std::string observation = encodeJson(draft.interfaceObservation, JsonStyle::compact);
  const std::string evidence = CanonicalAccessibilityEvidenceCodec::encodeSnapshot(draft.accessibilitySnapshot);
  const auto withVersion = [](std::string text, int version) {
    text.replace(text.find("\"schemaVersion\":") + 16, 1, std::to_string(version));
    return text;
  };
  struct Case {
    const char* label;
    int layout;
    std::string capture;
    std::optional<std::string> observation;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {"layout 3", 3, evidence, observation, "seen 42"},
      {"observation missing", 3, evidence, std::nullopt, "rebuilt 42"},
      {"observation of version 3, shape unknown", 3, evidence, "{\"schemaVersion\":3}", "rebuilt 42"},
      {"observation of version 5", 3, evidence, "{\"schemaVersion\":5}", "Artifact schema version 5 is not supported."},
      {"observation without version", 3, evidence, "{}",
       std::string("The file \"") + firstID +
           ".quillo/observation.json\" is damaged: The member \"schemaVersion\" is missing at $."},
      {"evidence of version 2", 3, "{\"schemaVersion\":2}", observation, "Artifact schema version 2 is not supported."},
      {"evidence cut off", 3, evidence.substr(0, 100), observation, "damaged"},
      {"evidence with another text", 3, std::string(evidence).replace(evidence.find("\"text\":\"Inbox\"") + 8, 1, "X"),
       observation,
       std::string("The file \"") + firstID +
           ".quillo/evidence.json\" is damaged: Text 0 of the Accessibility evidence does not match its digest or its "
           "lengths."},
      {"layout 2", 2, snapshot, observation, "seen 42"},
      {"layout 1 with an old snapshot", 1, withVersion(snapshot, 1), std::nullopt, "rebuilt 42"},
      {"layout 2, snapshot of version 3", 2, withVersion(snapshot, 3), observation,
       "Artifact schema version 3 is not supported."},
  };
  for (const Case& c : cases) {
    fs::remove_all(firstBundle());
    rewriteManifest([&](ArtifactManifest& manifest) {
      manifest.schemaVersion = c.layout;
      manifest.contextText = "outdated";
      manifest.contextProjectionVersion.reset();
      if (c.layout < 3) {
        manifest.evidenceFilename.reset();
        manifest.accessibilityFilename = "evidence.json";
      }
    });
    writeFile(firstBundle() / "screenshot.png", "PNG");
    writeFile(firstBundle() / "evidence.json", c.capture);
    if (c.observation) writeFile(firstBundle() / "observation.json", *c.observation);
    const std::string manifestBefore = readFile(firstBundle() / "manifest.json");
    std::string outcome = errorOfLoading();
    if (outcome == "no error") {
      const LoadedArtifact loaded = store.load(first);
      EXPECT_EQ(1, loaded.stored.manifest.contextProjectionVersion);
      EXPECT_EQ(42, loaded.accessibilitySnapshot.targetProcessIdentifier);
      outcome = loaded.stored.manifest.contextText.substr(std::string("## What Quillo saw\n\n").size());
    }
    EXPECT_THAT(outcome, ::testing::HasSubstr(c.expected)) << c.label;
    EXPECT_EQ(manifestBefore, readFile(firstBundle() / "manifest.json")) << c.label;
    EXPECT_EQ(c.observation.has_value(), fs::exists(firstBundle() / "observation.json")) << c.label;
  }
}

TEST_F(ArtifactStoreTest, saysWhatIsWrongWithABundle) {
  EXPECT_EQ("No artifact exists with ID " + std::string(firstID) + ".", errorOfLoading());
  store.create(makeDraft());
  const std::string outside = (directory.path() / "secret.json").string();
  writeFile(outside, readFile(firstBundle() / "observation.json"));
  struct Case {
    const char* label;
    std::function<void()> damage;
    std::string expected;
  };
  const auto replaced = [&](const char* name, const std::function<void(const fs::path&)>& make) {
    return [path = firstBundle() / name, make] {
      fs::remove_all(path);
      make(path);
    };
  };
  const auto link = [&](const fs::path& path) { fs::create_symlink(outside, path); };
  const auto pipe = [](const fs::path& path) { ::mkfifo(path.c_str(), 0600); };
  const auto folder = [](const fs::path& path) { fs::create_directory(path); };
  const auto nothing = [](const fs::path&) {};
  const std::vector<Case> cases = {
      {"manifest is a link", replaced("manifest.json", link), "manifest.json\": it is not a regular file"},
      {"manifest is a pipe", replaced("manifest.json", pipe), "manifest.json\": it is not a regular file"},
      {"manifest is a directory", replaced("manifest.json", folder), "manifest.json\": it is not a regular file"},
      {"no manifest", replaced("manifest.json", nothing), "manifest.json\": No such file or directory"},
      {"screenshot is a pipe", replaced("screenshot.png", pipe), "screenshot.png\": it is not a regular file"},
      {"evidence is a link", replaced("evidence.json", link), "evidence.json\": it is not a regular file"},
      {"observation is a link", replaced("observation.json", link), "observation.json\": it is not a regular file"},
      {"no screenshot", replaced("screenshot.png", nothing), "screenshot.png\": No such file or directory"},
      {"manifest of another version", [&] { rewriteManifest([](auto& m) { m.schemaVersion = 4; }); },
       "Artifact schema version 4 is not supported."},
      {"name outside of the bundle",
       [&] {
         rewriteManifest([](auto& m) {
           m.schemaVersion = 2;
           m.evidenceFilename.reset();
           m.accessibilityFilename = "../secret.json";
         });
       },
       "Artifact " + std::string(firstID) + " has an invalid or unsafe bundle layout."},
      {"huge name",
       [&] {
         rewriteManifest([](auto& m) {
           m.schemaVersion = 2;
           m.evidenceFilename.reset();
           m.accessibilityFilename = std::string(5'000, 'n');
         });
       },
       "File name too long"},
      {"unpaired surrogate",
       [&] { writeFile(firstBundle() / "manifest.json", R"({"schemaVersion":3,"title":"\uD800"})"); }, "is damaged: "},
      {"deep nesting", [&] { writeFile(firstBundle() / "evidence.json", std::string(100'000, '[')); }, "is damaged: "},
      {"no bytes", [&] { writeFile(firstBundle() / "evidence.json", ""); }, "is damaged: "},
  };
  for (const Case& c : cases) {
    fs::remove_all(root());
    store.create(makeDraft());
    store.create(makeDraft(secondID));
    c.damage();
    EXPECT_THAT(errorOfLoading(), ::testing::HasSubstr(c.expected)) << c.label;
    EXPECT_THAT(listed(), ::testing::Contains(secondID)) << c.label;
  }
}

TEST_F(ArtifactStoreTest, doesNotFollowALinkInThePlaceOfABundle) {
  store.create(makeDraft());
  fs::rename(firstBundle(), directory.path() / "elsewhere");
  fs::create_directory_symlink(directory.path() / "elsewhere", firstBundle());
  EXPECT_THAT(errorOfLoading(), ::testing::HasSubstr("it is not a directory"));
  EXPECT_THAT(listed(), ElementsAre());
}

TEST_F(ArtifactStoreTest, doesNotReadFilesBeyondTheLimit) {
  PosixFileSystem strict(100);
  ArtifactStore limited(root(), {strict, trash, clock, identifiers}, fakeProjection());
  limited.create(makeDraft());
  EXPECT_THROW(limited.load(first), FileSystemError);
  EXPECT_THAT(limited.list(), ElementsAre());
}

TEST_F(ArtifactStoreTest, damagedManifestsNeverKeepTheOthersFromTheUser) {
  store.create(makeDraft(secondID));
  const std::string text = encodeJson(makeManifest(), JsonStyle::prettyPrinted);
  for (const CorruptedJson& corrupted : singleFieldCorruptions(text)) {
    writeFile(firstBundle() / "manifest.json", corrupted.text);
    EXPECT_THAT(listed(), ::testing::Contains(secondID)) << corrupted.label;
    EXPECT_NE("no error", errorOfLoading()) << corrupted.label;  // the other files are missing
  }
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

TEST(PosixFileSystem, movesWithoutReplacingWhereTheKernelCannotToo) {
  using enum PosixFileSystem::ExclusiveMove;
  for (const auto move : {byTheKernel, byLookingFirst}) {
    const TemporaryDirectory directory;
    PosixFileSystem fileSystem(PosixFileSystem::defaultFileSizeLimit, move);
    const auto folder = fileSystem.openDirectory(directory.path());
    folder->makeDirectory("empty");
    folder->makeDirectory("new")->createFile("inside", "1");
    folder->createFile("file", "2");
    fs::create_symlink("nowhere", directory.path() / "link");
    for (const char* taken : {"empty", "file", "link"}) {
      for (const char* moved : {"new", "file"}) {
        EXPECT_THROW(folder->moveWithoutReplacing(moved, taken), FileSystemError) << moved << " to " << taken;
      }
    }
    folder->moveWithoutReplacing("new", "final");
    folder->moveWithoutReplacing("file", "final file");
    EXPECT_EQ("1", readFile(directory.path() / "final" / "inside"));
    EXPECT_EQ("2", readFile(directory.path() / "final file"));
    EXPECT_FALSE(fs::exists(directory.path() / "new") || fs::exists(directory.path() / "file"));
  }
}

TEST(PosixFileSystem, saysWhatItCouldNotDoWhereAndWhy) {
  const TemporaryDirectory directory;
  PosixFileSystem fileSystem;
  try {
    fileSystem.openDirectory(directory.path() / "missing");
    ADD_FAILURE();
  } catch (const FileSystemError& error) {
    EXPECT_EQ("Could not open \"" + (directory.path() / "missing").string() + "\": No such file or directory",
              error.errorDescription());
  }
  writeFile(directory.path() / "file", "");
  EXPECT_THROW(fileSystem.makeDirectories(directory.path() / "file" / "below"), FileSystemError);
}

/// Creates and edits until it is killed.
[[noreturn]] void createAndEditForever(const fs::path& root) {
  PosixFileSystem fileSystem;
  SystemWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store(root, {fileSystem, trash, clock, identifiers}, fakeProjection());
  for (;;) {
    const StoredArtifact stored = store.create(makeDraft(identifiers.makeUUID().text()));
    ArtifactManifest manifest = stored.manifest;
    manifest.title = "Edited";
    store.update(stored, manifest);
  }
}

TEST_F(ArtifactStoreTest, aKilledProcessLeavesOnlyWholeBundles) {
  constexpr int kills = 200;
  for (int i = 0; i < kills; ++i) {
    const pid_t child = ::fork();
    if (child == 0) createAndEditForever(root());
    ::usleep(static_cast<useconds_t>(500 + 137 * i % 9'000));
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(child, ::waitpid(child, &status, 0));
    ASSERT_TRUE(WIFSIGNALED(status));
  }
  const auto artifacts = store.list();
  EXPECT_GT(artifacts.size(), 0U);
  EXPECT_EQ(store.bundleNames().size(), artifacts.size());
  ContextArtifactDraft draft = makeDraft();
  for (const auto& stored : artifacts) {
    const LoadedArtifact loaded = store.load(stored.manifest.id);
    EXPECT_EQ(draft.accessibilitySnapshot, loaded.accessibilitySnapshot);
    EXPECT_TRUE(stored.manifest.title == "Inbox" || stored.manifest.title == "Edited");
  }
}

/// Creates bundles, and moves every second one away; leaves the program with 0 when nothing failed.
[[noreturn]] void createAndTrash(const fs::path& root, const fs::path& trashFolder) {
  constexpr int count = 60;
  int failures = 0;
  try {
    PosixFileSystem fileSystem;
    SystemWallClock clock;
    RandomUUIDGenerator identifiers;
    FakeTrash trash;
    trash.action = [&](const fs::path& path) {
      fs::rename(path, trashFolder / path.filename());
      return std::optional(trashFolder / path.filename());
    };
    ArtifactStore store(root, {fileSystem, trash, clock, identifiers}, fakeProjection());
    for (int i = 0; i < count; ++i) {
      const UUID id = identifiers.makeUUID();
      store.create(makeDraft(id.text()));
      if (i % 2 == 0) store.moveToTrash(id);
    }
  } catch (const std::exception&) {
    ++failures;
  }
  std::_Exit(failures);
}

TEST_F(ArtifactStoreTest, severalProcessesShareALibrary) {
  const fs::path trashFolder = directory.path() / "Trash";
  fs::create_directory(trashFolder);
  std::vector<pid_t> children;
  children.reserve(2);
  for (int i = 0; i < 2; ++i) {
    const pid_t child = ::fork();
    if (child == 0) createAndTrash(root(), trashFolder);
    children.push_back(child);
  }
  store.prepare();
  // Bundles come and go while they are read.
  std::size_t running = children.size();
  while (running > 0) {
    const auto artifacts = store.list();
    EXPECT_LE(artifacts.size(), 62U);
    int status = 0;
    if (const pid_t ended = ::waitpid(-1, &status, WNOHANG); ended > 0) {
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
      --running;
    }
  }
  EXPECT_EQ(60U, store.list().size());
  EXPECT_EQ(60U, store.bundleNames().size());
  EXPECT_EQ(60, std::distance(fs::directory_iterator(trashFolder), fs::directory_iterator()));
}

}  // namespace
}  // namespace quillo::test
