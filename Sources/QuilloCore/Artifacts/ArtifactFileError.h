#pragma once

#include <exception>
#include <filesystem>
#include <string>
#include <variant>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidenceCodecError.h"
#include "QuilloCore/Support/JsonError.h"

namespace quillo {

/// A file of a bundle does not hold what it should; says which file and why.
class ArtifactFileError : public std::exception {
 public:
  using Reason = std::variant<JsonError, CanonicalAccessibilityEvidenceCodecError>;

  /// `path` as the message names it: the bundle's directory and the file in it.
  ArtifactFileError(std::filesystem::path path, Reason reason);

  const std::filesystem::path& path() const { return path_; }
  const Reason& reason() const { return reason_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const ArtifactFileError& a, const ArtifactFileError& b) {
    return a.path_ == b.path_ && a.reason_ == b.reason_;
  }

 private:
  std::filesystem::path path_;
  Reason reason_;
  std::string description_;
};

}  // namespace quillo
