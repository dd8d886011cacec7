#include "ArtifactFixtures.h"

#include <fmt/format.h>

namespace quillo::test {

ArtifactManifest makeManifest(const std::string& id) {
  ArtifactManifest manifest;
  manifest.id = *UUID::parse(id);
  manifest.title = "Inbox";
  manifest.createdAt = *parseDate("2026-11-14T21:35:47Z");
  manifest.modifiedAt = *parseDate("2026-11-15T08:00:00Z");
  manifest.source = {"Mail", "org.example.Mail", "Inbox / 3 new", ArtifactRect{10, 20, 800, 600.5}};
  manifest.annotations = "look at \"this\"";
  manifest.contextText = "## What Quillo saw\n\nseen 42";
  manifest.contextProjectionVersion = 1;
  manifest.tags = {"work", "mail"};
  manifest.nodeCount = 2;
  manifest.characterCount = 11;
  manifest.screenshotFilename = "screenshot.png";
  manifest.evidenceFilename = "evidence.json";
  manifest.observationFilename = "observation.json";
  return manifest;
}

ContextArtifactDraft makeDraft(const std::string& id) {
  ContextArtifactDraft draft;
  draft.manifest = makeManifest(id);
  draft.screenshotPNG = std::string("PNG\0bytes", 9);
  AccessibilitySnapshot& snapshot = draft.accessibilitySnapshot;
  snapshot.capturedAt = *parseDate("2026-11-14T21:35:46.25Z");
  snapshot.targetProcessIdentifier = 42;
  AccessibilityNode window;
  window.role = "AXWindow";
  window.attributes = {{"AXTitle", std::string("Inbox")}};
  snapshot.nodes = {window};
  snapshot.deriveFields();
  draft.interfaceObservation = fakeProjection().makeObservation(snapshot);
  draft.interfaceObservation.rootElementID = "seen";
  return draft;
}

ArtifactProjection fakeProjection() {
  return {[](const AccessibilitySnapshot& snapshot) {
            InterfaceObservation observation;
            observation.observedAt = std::chrono::floor<std::chrono::seconds>(snapshot.capturedAt);
            observation.targetProcessIdentifier = snapshot.targetProcessIdentifier;
            observation.rootElementID = "rebuilt";
            return observation;
          },
          [](const InterfaceObservation& observation) {
            return fmt::format("## What Quillo saw\n\n{} {}", observation.rootElementID,
                               observation.targetProcessIdentifier);
          }};
}

}  // namespace quillo::test
