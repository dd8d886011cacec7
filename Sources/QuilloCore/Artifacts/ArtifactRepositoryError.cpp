#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"

#include <fmt/format.h>

#include <utility>

namespace quillo {
namespace {

using Error = ArtifactRepositoryError;

struct Describe {
  std::string operator()(const Error::ArtifactAlreadyExists& e) const {
    return fmt::format("An artifact with ID {} already exists.", e.id.text());
  }
  std::string operator()(const Error::ArtifactNotFound& e) const {
    return fmt::format("No artifact exists with ID {}.", e.id.text());
  }
  std::string operator()(const Error::InvalidBundleLayout& e) const {
    return fmt::format("Artifact {} has an invalid or unsafe bundle layout.", e.id.text());
  }
  std::string operator()(const Error::MissingAccessibilityEvidence& e) const {
    return fmt::format("Artifact {} references neither canonical nor legacy Accessibility evidence.", e.id.text());
  }
  std::string operator()(const Error::UnsupportedSchema& e) const {
    return fmt::format("Artifact schema version {} is not supported.", e.version);
  }
  std::string operator()(const Error::CouldNotMoveArtifactToTrash& e) const {
    return fmt::format("Artifact {} could not be moved to the Trash: {}", e.id.text(), e.reason);
  }
};

}  // namespace

ArtifactRepositoryError::ArtifactRepositoryError(Case value)
    : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

}  // namespace quillo
