#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

#include <fmt/format.h>

#include <string_view>

#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::ArtifactPasteTextRenderer {
namespace {

constexpr std::string_view contextHeading = "## What Quillo saw";

}  // namespace

std::string render(const ArtifactManifest& manifest) {
  const ArtifactSource& source = manifest.source;
  std::string text = fmt::format(
      "# Quillo capture: {}\n\n"
      "This text describes the screenshot attached immediately before it.\n\n"
      "Source: {} — {}\n"
      "Captured: {}\n",
      manifest.title, source.applicationName, source.windowTitle, formatDateSeconds(manifest.createdAt));
  if (source.bundleIdentifier && !source.bundleIdentifier->empty())
    text += "Bundle identifier: " + *source.bundleIdentifier + "\n";
  if (!trimmingWhiteSpace(manifest.annotations).empty())
    text += "\n## Human annotation\n" + manifest.annotations + "\n";
  text += "\n";
  if (!manifest.contextText.starts_with(contextHeading)) text.append(contextHeading).append("\n");
  text += manifest.contextText;
  return text;
}

}  // namespace quillo::ArtifactPasteTextRenderer
