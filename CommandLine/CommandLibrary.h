#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// A bundle that the user has named. It may be damaged: then its identifier is what the directory's name spells, if it
/// spells one.
struct NamedBundle {
  std::filesystem::path path;
  std::optional<UUID> id;

  /// The identifier, or the directory's name.
  std::string label() const;

  friend bool operator==(const NamedBundle&, const NamedBundle&) = default;
};

/// The user's text names no bundle, or several.
class ArtifactNameError : public std::exception {
 public:
  explicit ArtifactNameError(std::string description) : description_(std::move(description)) {}
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::string description_;
};

/// The library that a command works on, and how the user names what is in it.
class CommandLibrary {
 public:
  /// The user's own library when no directory is named. That one may not exist yet and then is empty; a named one must
  /// be readable.
  CommandLibrary(const std::optional<std::string>& directory, FileSystem& fileSystem, ArtifactStore::Services services);

  ArtifactStore& store() { return store_; }

  std::vector<StoredArtifact> list(ListingDetail detail);
  /// Every bundle: those that can be listed, newest first, then the damaged ones by name.
  std::vector<NamedBundle> bundles();

  /// An identifier in upper or lower case, an unambiguous beginning of one with at least four characters, or the path
  /// of a bundle directory.
  NamedBundle find(const std::string& text);

 private:
  static std::filesystem::path rootOf(const std::optional<std::string>& directory);
  bool isMissingByDefault();
  NamedBundle findByPath(const std::string& text);

  FileSystem& fileSystem_;
  bool isNamed_;
  ArtifactStore store_;
};

}  // namespace quillo
