// What is read of bundles that are old, damaged or hostile.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ArtifactStoreFixture.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "Tests/Support/JsonCorruption.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;

const UUID first = *UUID::parse(firstID);

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

}  // namespace
}  // namespace quillo::test
