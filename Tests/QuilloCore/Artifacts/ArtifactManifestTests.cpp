#include "QuilloCore/Artifacts/ArtifactManifest.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "ArtifactFixtures.h"
#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "Tests/Support/JsonCorruption.h"

namespace quillo::test {
namespace {

using Error = ArtifactRepositoryError;

TEST(ArtifactManifest, isWrittenWithSortedKeysAndPlainSlashes) {
  ArtifactManifest manifest = makeManifest();
  manifest.createdAt += std::chrono::milliseconds{900};
  manifest.contextProjectionVersion.reset();
  manifest.tags = {};
  EXPECT_EQ(R"({
  "annotations": "look at \"this\"",
  "characterCount": 11,
  "contextText": "## What Quillo saw\n\nseen 42",
  "createdAt": "2026-11-14T21:35:47Z",
  "evidenceFilename": "evidence.json",
  "id": "0A000000-0000-4000-8000-000000000001",
  "modifiedAt": "2026-11-15T08:00:00Z",
  "nodeCount": 2,
  "observationFilename": "observation.json",
  "schemaVersion": 3,
  "screenshotFilename": "screenshot.png",
  "source": {
    "applicationName": "Mail",
    "bundleIdentifier": "org.example.Mail",
    "windowFrame": {
      "height": 600.5,
      "width": 800,
      "x": 10,
      "y": 20
    },
    "windowTitle": "Inbox / 3 new"
  },
  "tags": [],
  "title": "Inbox"
})",
            encodeJson(manifest, JsonStyle::prettyPrinted));
}

TEST(ArtifactManifest, noDamageOfOneFieldGoesUnnoticed) {
  const ArtifactManifest manifest = makeManifest();
  const std::string text = encodeJson(manifest, JsonStyle::prettyPrinted);
  EXPECT_EQ(manifest, decodeJson<ArtifactManifest>(text));
  for (const CorruptedJson& corrupted : singleFieldCorruptions(text)) {
    try {
      EXPECT_NE(manifest, decodeJson<ArtifactManifest>(corrupted.text)) << corrupted.label;
    } catch (const JsonError&) {
      continue;
    }
  }
  for (std::size_t length = 0; length < text.size(); ++length)
    EXPECT_THROW(decodeJson<ArtifactManifest>(text.substr(0, length)), JsonError) << length;
}

TEST(ArtifactBundleLayout, acceptsOnlyTheFilesOfItsVersion) {
  using Name = std::optional<std::string>;
  using Version = std::int64_t;
  enum class Outcome { valid, invalid, unsupported };
  using enum Outcome;
  struct Case {
    const char* label;
    Version version;
    std::string screenshot;
    Name accessibility;
    Name evidence;
    Name observation;
    Outcome expected;
  };
  const std::string nul("a\0b", 3);
  const Name none;
  const std::vector<Case> cases = {
      {"version 3", 3, "screenshot.png", none, "evidence.json", "observation.json", valid},
      {"version 3 without observation", 3, "screenshot.png", none, "evidence.json", none, valid},
      {"version 3, other screenshot", 3, "Screenshot.png", none, "evidence.json", none, invalid},
      {"version 3, other evidence", 3, "screenshot.png", none, "evidence", none, invalid},
      {"version 3, other observation", 3, "screenshot.png", none, "evidence.json", "o.json", invalid},
      {"version 3 with a snapshot", 3, "screenshot.png", "a.json", "evidence.json", none, invalid},
      {"version 3 with a snapshot only", 3, "screenshot.png", "evidence.json", none, none, invalid},
      {"version 3 without evidence", 3, "screenshot.png", none, none, none, invalid},
      {"version 2", 2, "s.png", "a.json", none, none, valid},
      {"version 1 with observation", 1, " .s", ".a", none, "...", valid},
      {"version 1 with both", 1, "s.png", "a.json", "evidence.json", none, invalid},
      {"version 2 without snapshot", 2, "s.png", none, none, none, invalid},
      {"version 2, snapshot is the manifest", 2, "s.png", "manifest.json", none, none, invalid},
      {"version 2, screenshot is the snapshot", 2, "a.json", "a.json", none, none, invalid},
      {"version 2, observation is the screenshot", 2, "s.png", "a.json", none, "s.png", invalid},
      {"version 2, names differ in case", 2, "Manifest.json", "A", none, "a", valid},
      {"version 2, parent", 2, "..", "a.json", none, none, invalid},
      {"version 2, itself", 2, "s.png", ".", none, none, invalid},
      {"version 2, outside", 2, "s.png", "a.json", none, "../x.json", invalid},
      {"version 2, absolute", 2, "/etc/passwd", "a.json", none, none, invalid},
      {"version 2, empty", 2, "", "a.json", none, none, invalid},
      {"version 2, NUL", 2, "s.png", nul, none, none, invalid},
      {"version 4", 4, "screenshot.png", none, "evidence.json", none, unsupported},
      {"version 0, all wrong", 0, "", none, none, none, unsupported},
      {"version -1", -1, "screenshot.png", none, "evidence.json", none, unsupported},
  };
  for (const Case& c : cases) {
    ArtifactManifest manifest = makeManifest();
    manifest.schemaVersion = c.version;
    manifest.screenshotFilename = c.screenshot;
    manifest.accessibilityFilename = c.accessibility;
    manifest.evidenceFilename = c.evidence;
    manifest.observationFilename = c.observation;
    std::optional<Error> error;
    try {
      ArtifactBundleLayout::validate(manifest);
    } catch (const Error& thrown) {
      error = thrown;
    }
    std::optional<Error> expected;
    if (c.expected == invalid) expected = Error(Error::InvalidBundleLayout{manifest.id});
    if (c.expected == unsupported) expected = Error(Error::UnsupportedSchema{c.version});
    EXPECT_EQ(expected, error) << c.label;
  }
}

TEST(ArtifactBundleLayout, namesBundlesByTheirIdentifier) {
  const UUID id = *UUID::parse(secondID);
  EXPECT_EQ(std::string(secondID) + ".quillo", ArtifactBundleLayout::bundleName(id));
  EXPECT_EQ(id, ArtifactBundleLayout::identifierOfBundleName("fb000000-0000-4000-8000-000000000002.quillo"));
  EXPECT_EQ(std::nullopt, ArtifactBundleLayout::identifierOfBundleName(std::string(secondID) + ".tmp"));
  for (const char* name : {"X.quillo", "a.b.quillo", " .quillo"})
    EXPECT_TRUE(ArtifactBundleLayout::isBundleName(name)) << name;
  for (const char* name : {"", "quillo", ".quillo", ".X.quillo", "X.Quillo", "X.quillo ", "X.quillo.tmp", "X."})
    EXPECT_FALSE(ArtifactBundleLayout::isBundleName(name)) << name;
}

/// As each artifact's text, of which only this differs.
std::string pasteText(const std::string& title, const std::string& source, const std::string& rest) {
  return "# Quillo capture: " + title +
         "\n\nThis text describes the screenshot attached immediately before it.\n\nSource: " + source +
         "\nCaptured: 2026-11-14T21:35:47Z\n" + rest;
}

TEST(ArtifactPasteTextRenderer, putsTheSourceBeforeWhatWasSeen) {
  EXPECT_EQ(pasteText("Inbox", "Mail — Inbox / 3 new",
                      "Bundle identifier: org.example.Mail\n\n## Human annotation\nlook at \"this\"\n\n"
                      "## What Quillo saw\n\nseen 42"),
            ArtifactPasteTextRenderer::render(makeManifest()));

  ArtifactManifest empty = makeManifest();
  empty.title = " two  blanks ";
  empty.source = {"Mail", "", "", {}};
  empty.annotations = " \n\t\u00A0\r\n";
  empty.contextText = "";
  EXPECT_EQ(pasteText(" two  blanks ", "Mail — ", "\n## What Quillo saw\n"), ArtifactPasteTextRenderer::render(empty));

  ArtifactManifest odd = makeManifest();
  odd.title = "a\nb";
  odd.source = {"M\u2028ail", "org\r\nexample", " x\ty ", {}};
  odd.annotations = "  two\n  lines  ";
  odd.contextText = "## what Quillo saw";
  EXPECT_EQ(pasteText("a\nb", "M\u2028ail —  x\ty ",
                      "Bundle identifier: org\r\nexample\n\n## Human annotation\n  two\n  lines  \n\n"
                      "## What Quillo saw\n## what Quillo saw"),
            ArtifactPasteTextRenderer::render(odd));
}

}  // namespace
}  // namespace quillo::test
