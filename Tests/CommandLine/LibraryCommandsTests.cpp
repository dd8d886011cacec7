#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "RunningProgram.h"
#include "Tests/Support/GeneratedSnapshot.h"
#include "Tests/Support/GoldenFile.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace quillo::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

const std::string thirdID = "0A00FFFF-0000-4000-8000-000000000003";

FinishedProgram failing(int status, const std::string& message) {
  return {status, "", "quillo: " + message + "\n", 0};
}

/// A library with the first, the second and the third artifact, newest first.
class LibraryCommands : public ::testing::Test {
 protected:
  LibraryCommands() {
    for (const std::string& id : {std::string(firstID), std::string(secondID), thirdID}) {
      ContextArtifactDraft draft = makeDraft(id);
      draft.manifest.createdAt -= std::chrono::hours{age++};
      store.create(draft);
    }
  }

  FinishedProgram quillo(Arguments arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), "--library=" + root.string());
    return quilloWithItsOwnLibrary(arguments, input);
  }
  FinishedProgram quilloWithItsOwnLibrary(const Arguments& arguments, const std::string& input = {}) {
    return runQuillo(arguments, input, environment);
  }

  fs::path bundle(const std::string& id) const { return root / (id + ".quillo"); }

  TemporaryDirectory directory;
  fs::path root = directory.path() / "Library";
  std::vector<std::string> environment = {"XDG_DATA_HOME=" + (directory.path() / "data").string(),
                                          "HOME=" + directory.path().string()};
  PosixFileSystem fileSystem;
  FixedWallClock clock;
  RandomUUIDGenerator identifiers;
  FakeTrash trash;
  ArtifactStore store{root, {fileSystem, trash, clock, identifiers}, ArtifactProjection::standard()};
  int age = 0;
};

TEST_F(LibraryCommands, listNamesEachArtifactOnALine) {
  const StoredArtifact stored = store.list().front();
  ArtifactManifest manifest = stored.manifest;
  manifest.title = "two\tfields\r\nand lines\u2028";
  manifest.source.applicationName = "M\nail";
  store.update(stored, manifest);
  const std::string expected = std::string(firstID) + "\t2026-11-14T21:35:47Z\tM ail\ttwo fields  and lines \n" +
                               secondID + "\t2026-11-14T20:35:47Z\tMail\tInbox\n" +  //
                               thirdID + "\t2026-11-14T19:35:47Z\tMail\tInbox\n";
  EXPECT_EQ((FinishedProgram{0, expected, ""}), quillo({"list"}));
  EXPECT_EQ((FinishedProgram{0, expected, ""}), quilloWithItsOwnLibrary({"list", "--library", root.string()}));

  std::vector<ArtifactManifest> manifests;
  for (const auto& listed : store.list()) manifests.push_back(listed.manifest);
  EXPECT_EQ((FinishedProgram{0, encodeJson(manifests, JsonStyle::prettyPrinted) + "\n", ""}),
            quillo({"list", "--json"}));
}

TEST_F(LibraryCommands, theDefaultLibraryMayBeMissingAndANamedOneMayNot) {
  EXPECT_EQ((FinishedProgram{0, "", ""}), quilloWithItsOwnLibrary({"list"}));
  EXPECT_EQ((FinishedProgram{0, "[]\n", ""}), quilloWithItsOwnLibrary({"list", "--json"}));
  EXPECT_EQ((FinishedProgram{0, "", ""}), quilloWithItsOwnLibrary({"check"}));
  EXPECT_EQ(failing(1, "No artifact exists with ID " + std::string(firstID) + "."),
            quilloWithItsOwnLibrary({"text", firstID}));
  EXPECT_FALSE(fs::exists(directory.path() / "data"));
  fs::rename(root, directory.path() / "away");
  for (const char* command : {"list", "check"}) {
    EXPECT_EQ(failing(1, "Could not open \"" + root.string() + "\": No such file or directory"), quillo({command}));
  }
  fs::create_directories(directory.path() / "data" / "Quillo");
  fs::rename(directory.path() / "away", directory.path() / "data" / "Quillo" / "Artifacts");
  EXPECT_THAT(quilloWithItsOwnLibrary({"list"}).output, HasSubstr(secondID));
}

TEST_F(LibraryCommands, anArtifactIsNamedByItsIdentifierItsBeginningOrItsPath) {
  fs::copy(bundle(secondID), directory.path() / "outside.quillo");
  const std::string text = ArtifactPasteTextRenderer::render(store.load(*UUID::parse(secondID)).stored.manifest) + "\n";
  for (const std::string& name :
       {std::string(secondID), std::string("fb000000-0000-4000-8000-000000000002"), std::string("FB00"),
        std::string("fb000000-0"), bundle(secondID).string(), bundle(secondID).string() + "/",
        (directory.path() / "Library" / ".." / "outside.quillo").string()}) {
    EXPECT_EQ((FinishedProgram{0, text, ""}), quillo({"text", name})) << name;
  }
  EXPECT_EQ(failing(1, "2 artifacts have an identifier that begins with 0A00."), quillo({"text", "0a00"}));
  EXPECT_EQ(failing(1, "No artifact has an identifier that begins with ABCD."), quillo({"text", "abcd"}));
  EXPECT_EQ(failing(1, "No artifact exists with ID 0A00FFFF-0000-4000-8000-000000000009."),
            quillo({"text", "0a00ffff-0000-4000-8000-000000000009"}));
  for (const char* name : {"fb0", "", "fb00_", "FB000000-00004"})
    EXPECT_EQ(1, quillo({"text", name}).exitStatus) << name;
  EXPECT_THAT(quillo({"text", "./FB00"}).error, HasSubstr("No such file or directory"));
  fs::remove(bundle(thirdID) / "manifest.json");
  EXPECT_EQ(failing(1, "2 artifacts have an identifier that begins with 0A00."), quillo({"text", "0a00"}));
}

TEST_F(LibraryCommands, showDescribesWhatLoadingYields) {
  const LoadedArtifact loaded = store.load(*UUID::parse(firstID));
  EXPECT_EQ((FinishedProgram{0, encodeJson(loaded.stored.manifest, JsonStyle::prettyPrinted) + "\n", ""}),
            quillo({"show", firstID, "--json"}));
  const FinishedProgram run = quillo({"show", firstID});
  EXPECT_EQ(0, run.exitStatus);
  EXPECT_EQ(
      "Inbox\n"
      "Identifier: 0A000000-0000-4000-8000-000000000001\n"
      "Source: Mail — Inbox / 3 new\n"
      "Application: org.example.Mail\n"
      "Window: 800 x 600.5 at 10, 20\n"
      "Captured: 2026-11-14T21:35:47Z\n"
      "Edited: 2026-11-15T08:00:00Z\n"
      "Tags: work, mail\n"
      "Capture: 2 nodes, 11 characters, 0 elements\n"
      "Screenshot: 9 bytes\n"
      "Bundle: " +
          bundle(firstID).string() +
          "\n"
          "\n"
          "look at \"this\"\n",
      run.output);
}

TEST_F(LibraryCommands, editChangesWhatItIsToldToAndNothingElse) {
  const ArtifactManifest before = store.readBundleManifest(bundle(firstID)).manifest;
  EXPECT_EQ((FinishedProgram{0, "", ""}), quillo({"edit", firstID, "--title", "Ü \"new\""}));
  ArtifactManifest after = store.readBundleManifest(bundle(firstID)).manifest;
  EXPECT_LT(before.modifiedAt, after.modifiedAt);
  ArtifactManifest expected = before;
  expected.title = "Ü \"new\"";
  expected.modifiedAt = after.modifiedAt;
  EXPECT_EQ(expected, after);
  EXPECT_EQ((FinishedProgram{0, "", ""}), quillo({"edit", firstID, "--annotations", "", "--title=-"}));
  after = store.readBundleManifest(bundle(firstID)).manifest;
  EXPECT_EQ("", after.annotations);
  EXPECT_EQ("-", after.title);

  for (const Arguments& wrong :
       {Arguments{"edit", firstID}, {"edit", "--title", "x"}, {"edit", firstID, "--title", "\xFF"}}) {
    const FinishedProgram run = quillo(wrong);
    EXPECT_EQ(2, run.exitStatus) << run.error;
    EXPECT_EQ("", run.output);
  }
  EXPECT_EQ(1, quillo({"edit", "abcd", "--title", "x"}).exitStatus);
}

TEST_F(LibraryCommands, checkReadsEveryFileOfEveryBundle) {
  fs::create_directory(root / "X.quillo");
  fs::remove(bundle(secondID) / "screenshot.png");
  std::string evidence = readFile(bundle(thirdID) / "evidence.json");
  evidence.replace(evidence.find("\"text\":\"Inbox\"") + 8, 1, "X");
  writeFile(bundle(thirdID) / "evidence.json", std::string_view(evidence));
  const std::string damagedID = "DD000000-0000-4000-8000-000000000004";
  writeFile(bundle(damagedID) / "manifest.json", "{\n");
  const FinishedProgram all = quillo({"check"});
  EXPECT_EQ(3, all.exitStatus);
  EXPECT_EQ("", all.error);
  const std::string second = std::string(secondID) + "\tCould not read \"" + bundle(secondID).string() +
                             "/screenshot.png\": No such file or directory\n";
  EXPECT_THAT(all.output,
              ::testing::StartsWith(std::string(firstID) + "\tok\n" + second + thirdID + "\tThe file \"" + thirdID +
                                    ".quillo/evidence.json\" is damaged: Text 0 of the Accessibility evidence does not "
                                    "match its digest or its lengths.\n" +
                                    damagedID + "\tThe file \"" + damagedID + ".quillo/manifest.json\" is damaged: "));
  EXPECT_THAT(all.output, HasSubstr("\nX.quillo\tCould not read \"" + root.string() +
                                    "/X.quillo/manifest.json\": No such file or directory\n"));
  EXPECT_EQ((FinishedProgram{3, std::string(firstID) + "\tok\n" + second, ""}),
            quillo({"check", secondID, "0A000", "fb00"}));
  EXPECT_EQ((FinishedProgram{0, std::string(firstID) + "\tok\n", ""}), quillo({"check", firstID}));
  EXPECT_EQ(failing(1, "No artifact has an identifier that begins with EEEE."), quillo({"check", firstID, "eeee"}));
}

TEST_F(LibraryCommands, trashMovesWhatItCanAndSaysWhereItIs) {
  fs::remove(bundle(thirdID) / "manifest.json");
  // A file in its place: no Trash can be made.
  const fs::path trashDirectory = directory.path() / "data" / "Trash";
  writeFile(trashDirectory, "");
  const FinishedProgram run = quillo({"trash", firstID, bundle(thirdID).string()});
  EXPECT_EQ(1, run.exitStatus);
  EXPECT_EQ("", run.output);
  const std::string problem = " could not be moved to the Trash: ";
  EXPECT_THAT(run.error, ::testing::StartsWith("quillo: Artifact " + std::string(firstID) + problem));
  EXPECT_THAT(run.error, HasSubstr("\nquillo: Artifact " + thirdID + problem));
  EXPECT_TRUE(fs::exists(bundle(firstID)));
  fs::remove(trashDirectory);

  const fs::path trashed = trashDirectory / "files";
  EXPECT_EQ((FinishedProgram{3, (trashed / (std::string(firstID) + ".quillo")).string() + "\n",
                             "quillo: No artifact has an identifier that begins with EEEE.\n"}),
            quillo({"trash", "eeee", firstID}));
  EXPECT_FALSE(fs::exists(bundle(firstID)));
  EXPECT_TRUE(fs::exists(trashed / (std::string(firstID) + ".quillo") / "manifest.json"));
  EXPECT_EQ((FinishedProgram{0,
                             (trashed / (std::string(secondID) + ".quillo")).string() + "\n" +
                                 (trashed / (thirdID + ".quillo")).string() + "\n",
                             ""}),
            quillo({"trash", secondID, bundle(thirdID).string()}));
  EXPECT_EQ(failing(1, "No artifact exists with ID " + std::string(secondID) + "."), quillo({"trash", secondID}));
  EXPECT_EQ(1, quillo({"trash", root.string()}).exitStatus);
  EXPECT_TRUE(fs::exists(root));
  EXPECT_EQ(2, quillo({"trash"}).exitStatus);
}

TEST_F(LibraryCommands, evidenceConvertsBothWays) {
  const AccessibilitySnapshot snapshot = generateSnapshot(11, 30);
  // A snapshot's JSON has whole seconds.
  AccessibilitySnapshot stored = snapshot;
  stored.capturedAt = std::chrono::floor<std::chrono::seconds>(snapshot.capturedAt);
  const std::string json = encodeJson(snapshot, JsonStyle::prettyPrinted) + "\n";
  const std::string evidence = CanonicalAccessibilityEvidenceCodec::encodeSnapshot(stored) + "\n";
  EXPECT_EQ((FinishedProgram{0, evidence, ""}), quillo({"evidence", "encode"}, json));
  writeFile(directory.path() / "evidence.json", std::string_view(evidence));
  EXPECT_EQ((FinishedProgram{0, json, ""}),
            quillo({"evidence", "decode", (directory.path() / "evidence.json").string()}));
  EXPECT_EQ((FinishedProgram{0, json, ""}), quillo({"evidence", "decode", "-"}, evidence));
  EXPECT_EQ(failing(1, "Accessibility evidence schema version 2 is not supported."),
            quillo({"evidence", "decode"}, "{\"schemaVersion\":2}"));
  EXPECT_EQ(2, quillo({"evidence"}).exitStatus);
  EXPECT_EQ(1, quillo({"evidence", "decode"}, "").exitStatus);
}

}  // namespace
}  // namespace quillo::test
