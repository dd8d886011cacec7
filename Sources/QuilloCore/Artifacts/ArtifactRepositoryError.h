#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// Why the library could not do what it was asked. Errors of the file system are FileSystemError, damage inside of a
/// file is ArtifactFileError.
class ArtifactRepositoryError : public std::exception {
 public:
  struct ArtifactAlreadyExists {
    UUID id;
    friend bool operator==(const ArtifactAlreadyExists&, const ArtifactAlreadyExists&) = default;
  };
  struct ArtifactNotFound {
    UUID id;
    friend bool operator==(const ArtifactNotFound&, const ArtifactNotFound&) = default;
  };
  struct InvalidBundleLayout {
    UUID id;
    friend bool operator==(const InvalidBundleLayout&, const InvalidBundleLayout&) = default;
  };
  struct MissingAccessibilityEvidence {
    UUID id;
    friend bool operator==(const MissingAccessibilityEvidence&, const MissingAccessibilityEvidence&) = default;
  };
  struct UnsupportedSchema {
    std::int64_t version = 0;
    friend bool operator==(const UnsupportedSchema&, const UnsupportedSchema&) = default;
  };
  struct CouldNotMoveArtifactToTrash {
    UUID id;
    std::string reason;
    friend bool operator==(const CouldNotMoveArtifactToTrash&, const CouldNotMoveArtifactToTrash&) = default;
  };
  using Case = std::variant<ArtifactAlreadyExists, ArtifactNotFound, InvalidBundleLayout, MissingAccessibilityEvidence,
                            UnsupportedSchema, CouldNotMoveArtifactToTrash>;

  // Not explicit: an error is thrown by naming its case.
  ArtifactRepositoryError(Case value);  // NOLINT(google-explicit-constructor)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const ArtifactRepositoryError& a, const ArtifactRepositoryError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
