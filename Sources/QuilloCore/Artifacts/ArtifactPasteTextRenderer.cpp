#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"

#include <fmt/format.h>

#include <string_view>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::ArtifactPasteTextRenderer {
namespace {

constexpr std::string_view contextHeading = "## What Quillo saw";

bool breaksLine(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
  return isControl || c == 0x2028 || c == 0x2029;
}

std::string onOneLine(const std::string& text) {
  for (std::size_t position = 0; position < text.size();) {
    if (breaksLine(nextCodePoint(text, position))) return bringingToOneLine(text);
  }
  return text;
}

}  // namespace

std::string render(const ArtifactManifest& manifest) {
  const ArtifactSource& source = manifest.source;
  std::string text = fmt::format(
      "# Quillo capture: {}\n\n"
      "This text describes the screenshot attached immediately before it.\n\n"
      "Source: {} — {}\n"
      "Captured: {}\n",
      onOneLine(manifest.title), onOneLine(source.applicationName), onOneLine(source.windowTitle),
      formatDateSeconds(manifest.createdAt));
  if (source.bundleIdentifier && !source.bundleIdentifier->empty())
    text += "Bundle identifier: " + onOneLine(*source.bundleIdentifier) + "\n";
  if (!trimmingWhiteSpace(manifest.annotations).empty())
    text += "\n## Human annotation\n" + manifest.annotations + "\n";
  text += "\n";
  if (!manifest.contextText.starts_with(contextHeading)) text.append(contextHeading).append("\n");
  text += manifest.contextText;
  return text;
}

}  // namespace quillo::ArtifactPasteTextRenderer
