#include <fmt/format.h>

#include "Commands.h"
#include "OutputText.h"

namespace quillo {
namespace {

std::string describe(const LoadedArtifact& artifact) {
  const ArtifactManifest& manifest = artifact.stored.manifest;
  const ArtifactSource& source = manifest.source;
  std::vector<std::string> lines = {
      showingBreaksAsBlanks(manifest.title),
      "Identifier: " + manifest.id.text(),
      fmt::format("Source: {} — {}", showingBreaksAsBlanks(source.applicationName),
                  showingBreaksAsBlanks(source.windowTitle)),
  };
  if (source.bundleIdentifier) lines.push_back("Application: " + showingBreaksAsBlanks(*source.bundleIdentifier));
  if (const auto& frame = source.windowFrame)
    lines.push_back(fmt::format("Window: {} x {} at {}, {}", frame->width, frame->height, frame->x, frame->y));
  lines.push_back("Captured: " + formatDateSeconds(manifest.createdAt));
  lines.push_back("Edited: " + formatDateSeconds(manifest.modifiedAt));
  std::string tags;
  for (const auto& tag : manifest.tags) tags += (tags.empty() ? "" : ", ") + showingBreaksAsBlanks(tag);
  if (!tags.empty()) lines.push_back("Tags: " + tags);
  lines.push_back(fmt::format("Capture: {} nodes, {} characters, {} elements", manifest.nodeCount,
                              manifest.characterCount, artifact.interfaceObservation.elements.size()));
  lines.push_back(fmt::format("Screenshot: {} bytes", artifact.screenshotPNG.size()));
  lines.push_back("Bundle: " + artifact.stored.bundlePath.string());
  if (!manifest.annotations.empty()) {
    lines.emplace_back();
    lines.push_back(manifest.annotations);
  }
  return *joiningLines(lines);
}

}  // namespace

CommandResult runShow(const ShowOptions& options, CommandLibrary& library) {
  const LoadedArtifact artifact = library.store().loadBundle(library.find(options.artifact).path);
  if (options.printsJson) return {encodeJson(artifact.stored.manifest, JsonStyle::prettyPrinted)};
  return {describe(artifact)};
}

}  // namespace quillo
