#include "QuilloCore/Artifacts/ArtifactBundleReader.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <type_traits>
#include <utility>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/ArtifactFileError.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodec.h"
#include "QuilloCore/Semantics/CoverageSection.h"
#include "QuilloCore/Support/JsonReader.h"

namespace quillo {
namespace {

using Error = ArtifactRepositoryError;

/// Versions are read by themselves, before a record that an unknown version may have changed.
void requireSchemaVersion(const JsonCursor& root, std::int64_t oldest, std::int64_t newest) {
  const auto version = readJson<std::int64_t>(root.require("schemaVersion"));
  if (version < oldest || version > newest) throw Error(Error::UnsupportedSchema{version});
}

/// As readJson, but the context text is checked and not copied.
ArtifactManifest readWithoutContextText(const JsonCursor& root) {
  ArtifactManifest manifest;
  forEachSortedField<ArtifactManifest>([&](const auto& field) {
    using Member = std::remove_cvref_t<decltype(manifest.*field.member)>;
    if constexpr (detail::isOptional<Member>) {
      if (const auto member = root.find(field.key))
        manifest.*field.member = readJson<typename Member::value_type>(*member);
    } else if constexpr (std::is_same_v<Member, std::string>) {
      const std::string_view text = root.require(field.key).string();
      if (field.member != &ArtifactManifest::contextText) manifest.*field.member = text;
    } else {
      manifest.*field.member = readJson<Member>(root.require(field.key));
    }
  });
  return manifest;
}

}  // namespace

/// Calls `decode(bytes)`, so that its errors name the file.
template <class Decode>
auto ArtifactBundleReader::decodeFile(const std::string& filename, Decode decode) const {
  const std::string bytes = bundle_.readFile(filename);
  try {
    return decode(bytes);
  } catch (const JsonError& error) {
    throw ArtifactFileError(std::filesystem::path(bundleName_) / filename, error);
  } catch (const CanonicalAccessibilityEvidenceCodecError& error) {
    throw ArtifactFileError(std::filesystem::path(bundleName_) / filename, error);
  }
}

ListedManifest ArtifactBundleReader::readListedManifest(ListingDetail detail) const {
  auto listed = decodeFile(std::string(ArtifactBundleLayout::manifestFilename), [&](const std::string& bytes) {
    const JsonDocument document = JsonDocument::parseInPlace(bytes);
    const JsonCursor root = document.root();
    requireSchemaVersion(root, 1, ArtifactManifest::currentSchemaVersion);
    ArtifactManifest kept =
        detail == ListingDetail::everything ? readJson<ArtifactManifest>(root) : readWithoutContextText(root);
    return ListedManifest{std::move(kept), saysPartialObservation(root.require("contextText").string())};
  });
  ArtifactBundleLayout::validate(listed.manifest);
  return listed;
}

std::string ArtifactBundleReader::readScreenshot(const ArtifactManifest& manifest) const {
  return bundle_.readFile(manifest.screenshotFilename);
}

AccessibilitySnapshot ArtifactBundleReader::readSnapshot(const ArtifactManifest& manifest) const {
  if (manifest.evidenceFilename) {
    return decodeFile(*manifest.evidenceFilename, [](const std::string& bytes) {
      const JsonDocument document = JsonDocument::parseInPlace(bytes);
      requireSchemaVersion(document.root(), CanonicalAccessibilityEvidence::currentSchemaVersion,
                           CanonicalAccessibilityEvidence::currentSchemaVersion);
      return CanonicalAccessibilityEvidenceCodec::decodeSnapshot(document.root());
    });
  }
  if (manifest.accessibilityFilename) {
    return decodeFile(*manifest.accessibilityFilename, [](const std::string& bytes) {
      const JsonDocument document = JsonDocument::parseInPlace(bytes);
      requireSchemaVersion(document.root(), 1, AccessibilitySnapshot::currentSchemaVersion);
      return readJson<AccessibilitySnapshot>(document.root());
    });
  }
  throw Error(Error::MissingAccessibilityEvidence{manifest.id});
}

InterfaceObservationRead ArtifactBundleReader::readObservation(const ArtifactManifest& manifest,
                                                               const AccessibilitySnapshot& snapshot,
                                                               const ArtifactProjection& projection) const {
  std::optional<InterfaceObservation> stored;
  if (manifest.observationFilename && bundle_.status(*manifest.observationFilename)) {
    stored =
        decodeFile(*manifest.observationFilename, [](const std::string& bytes) -> std::optional<InterfaceObservation> {
          const JsonDocument document = JsonDocument::parseInPlace(bytes);
          const JsonCursor root = document.root();
          requireSchemaVersion(root, 1, InterfaceObservation::currentSchemaVersion);
          const auto version = readJson<std::int64_t>(root.require("schemaVersion"));
          if (version != InterfaceObservation::currentSchemaVersion) return std::nullopt;
          return readJson<InterfaceObservation>(root);
        });
  }
  if (stored) return {*std::move(stored), false};
  return {projection.makeObservation(snapshot), true};
}

}  // namespace quillo
