#include "CommandLibrary.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"
#include "QuilloCore/Artifacts/ArtifactRepositoryError.h"
#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;
namespace Layout = ArtifactBundleLayout;

constexpr std::size_t identifierLength = 36;
constexpr std::size_t shortestBeginning = 4;

/// The text in upper case when an identifier could begin so.
std::optional<std::string> beginningOfIdentifier(std::string_view text) {
  if (text.size() < shortestBeginning || text.size() > identifierLength) return std::nullopt;
  std::string beginning;
  for (char c : text) {
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
    const bool isHyphenPlace =
        beginning.size() == 8 || beginning.size() == 13 || beginning.size() == 18 || beginning.size() == 23;
    const bool isDigit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
    if (isHyphenPlace ? c != '-' : !isDigit) return std::nullopt;
    beginning += c;
  }
  return beginning;
}

/// Absolute and without a slash at the end; a link to a bundle stays a link.
fs::path placeOf(const std::string& text) {
  fs::path path = fs::absolute(text).lexically_normal();
  return path.has_filename() ? path : path.parent_path();
}

bool isDirectory(const fs::path& path) {
  std::error_code unreadable;
  return fs::is_directory(fs::symlink_status(path, unreadable));
}

}  // namespace

std::string NamedBundle::label() const {
  return id ? id->text() : path.filename().string();
}

fs::path CommandLibrary::rootOf(const std::optional<std::string>& directory) {
  return directory ? placeOf(*directory) : defaultLibraryPath();
}

CommandLibrary::CommandLibrary(const std::optional<std::string>& directory, FileSystem& fileSystem,
                               ArtifactStore::Services services)
    : fileSystem_(fileSystem),
      isNamed_(directory.has_value()),
      store_(rootOf(directory), services, ArtifactProjection::standard()) {
  if (isNamed_) fileSystem_.openDirectory(store_.rootPath());
}

bool CommandLibrary::isMissingByDefault() {
  if (isNamed_) return false;
  try {
    fileSystem_.openDirectory(store_.rootPath());
    return false;
  } catch (const FileSystemError& error) {
    if (error.isSystemFailure(ENOENT)) return true;
    throw;
  }
}

std::vector<StoredArtifact> CommandLibrary::list(ListingDetail detail) {
  if (isMissingByDefault()) return {};
  return store_.list(detail);
}

std::vector<NamedBundle> CommandLibrary::bundles() {
  if (isMissingByDefault()) return {};
  std::vector<std::string> names = store_.bundleNames();
  std::vector<NamedBundle> bundles;
  for (const StoredArtifact& stored : store_.list(ListingDetail::withoutContextTexts)) {
    bundles.push_back({stored.bundlePath, stored.manifest.id});
    const auto name = std::ranges::lower_bound(names, stored.bundlePath.filename().native());
    if (name != names.end() && *name == stored.bundlePath.filename().native()) names.erase(name);
  }
  for (const std::string& name : names)
    bundles.push_back({store_.rootPath() / name, Layout::identifierOfBundleName(name)});
  return bundles;
}

NamedBundle CommandLibrary::find(const std::string& text) {
  const bool isPath = text.find('/') != std::string::npos || Layout::isBundleName(text);
  const auto beginning = isPath ? std::nullopt : beginningOfIdentifier(text);
  if (!beginning) {
    if (isPath || isDirectory(text)) return findByPath(text);
    throw ArtifactNameError(fmt::format(
        "\"{}\" is neither a bundle nor an artifact's identifier or the first four or more characters of one.", text));
  }

  std::vector<NamedBundle> found;
  for (NamedBundle& bundle : bundles()) {
    if (bundle.id && bundle.id->text().starts_with(*beginning)) found.push_back(std::move(bundle));
  }
  if (found.size() == 1) return found.front();
  if (found.size() > 1)
    throw ArtifactNameError(
        fmt::format("{} artifacts have an identifier that begins with {}.", found.size(), *beginning));
  if (isDirectory(text)) return findByPath(text);
  if (const auto id = UUID::parse(text)) throw ArtifactRepositoryError(ArtifactRepositoryError::ArtifactNotFound{*id});
  throw ArtifactNameError(fmt::format("No artifact has an identifier that begins with {}.", *beginning));
}

NamedBundle CommandLibrary::findByPath(const std::string& text) {
  const fs::path path = placeOf(text);
  try {
    return {path, store_.readBundleManifest(path).manifest.id};
  } catch (const std::exception&) {
    // Damage is for the command to report; but what neither is a bundle nor is called one is none.
    const bool isBundle = Layout::isBundleName(path.filename().native()) && isDirectory(path);
    if (!isBundle) throw;
    return {path, Layout::identifierOfBundleName(path.filename().native())};
  }
}

}  // namespace quillo
