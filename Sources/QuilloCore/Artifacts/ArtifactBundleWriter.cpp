#include "QuilloCore/Artifacts/ArtifactBundleWriter.h"

#include <fmt/format.h>

#include <chrono>
#include <string_view>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {
namespace {

namespace Layout = ArtifactBundleLayout;

constexpr std::chrono::seconds abandonmentAge{3'600};
constexpr std::string_view draftPrefix = ".manifest.json.";
constexpr std::string_view draftSuffix = ".tmp";

bool isManifestDraftName(std::string_view name) {
  if (!name.starts_with(draftPrefix) || !name.ends_with(draftSuffix)) return false;
  name.remove_prefix(draftPrefix.size());
  return name.size() > draftSuffix.size() && UUID::parse(name.substr(0, name.size() - draftSuffix.size()));
}

void removeAbandonedDrafts(Directory& bundle, Date now) {
  for (const DirectoryEntry& entry : bundle.entries()) {
    if (entry.kind != FileKind::regular || !isManifestDraftName(entry.name)) continue;
    try {
      const auto status = bundle.status(entry.name);
      if (status && status->modifiedAt < now - abandonmentAge) bundle.remove(entry.name);
    } catch (const FileSystemError&) {
      // It is hidden and harmless; a later edit tries again.
    }
  }
}

}  // namespace

ArtifactBundleFiles encodeBundle(const ArtifactManifest& manifest, const ContextArtifactDraft& draft) {
  return {.screenshot = draft.screenshotPNG,
          .evidence = CanonicalAccessibilityEvidenceCodec::encodeSnapshot(draft.accessibilitySnapshot),
          .observation = encodeJson(draft.interfaceObservation, JsonStyle::prettyPrinted),
          .manifest = encodeJson(manifest, JsonStyle::prettyPrinted)};
}

void writeBundle(Directory& root, const std::string& staging, const std::string& bundle,
                 const ArtifactBundleFiles& files, const std::function<void()>& checkpoint) {
  checkpoint();
  // Where not even this can be made, nothing is to be taken away, and its failure is the one to tell.
  const auto directory = root.makeDirectory(staging);
  bool isInPlace = false;
  try {
    const auto createFile = [&](std::string_view name, std::string_view bytes) {
      checkpoint();
      directory->createFile(name, bytes);
    };
    createFile(Layout::screenshotFilename, files.screenshot);
    createFile(Layout::evidenceFilename, files.evidence);
    createFile(Layout::observationFilename, files.observation);
    createFile(Layout::manifestFilename, files.manifest);
    directory->sync();
    checkpoint();
    root.moveWithoutReplacing(staging, bundle);
    isInPlace = true;
    root.sync();
  } catch (...) {
    // A bundle that a power cut may still take away has not been created.
    if (isInPlace) root.moveWithoutReplacing(bundle, staging);
    root.remove(staging);
    throw;
  }
}

void replaceManifest(Directory& bundle, const ArtifactManifest& manifest, const UUID& attempt, Date now) {
  const std::string bytes = encodeJson(manifest, JsonStyle::prettyPrinted);
  removeAbandonedDrafts(bundle, now);
  const std::string draft = fmt::format("{}{}{}", draftPrefix, attempt.text(), draftSuffix);
  try {
    bundle.createFile(draft, bytes);
    bundle.replaceFile(draft, Layout::manifestFilename);
  } catch (...) {
    try {
      bundle.remove(draft);
    } catch (const FileSystemError&) {
      // What kept the draft from being written is the failure to tell; a later edit takes the draft away.
    }
    throw;
  }
  bundle.sync();
}

}  // namespace quillo
