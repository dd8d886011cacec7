#include "QuilloCore/Artifacts/StagingDirectory.h"

#include <fmt/format.h>

#include <chrono>

#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo::StagingDirectory {
namespace {

constexpr std::chrono::seconds abandonmentAge{3'600};
constexpr std::string_view suffix = ".tmp";

bool isAbandoned(Directory& root, const DirectoryEntry& entry, Date now) {
  if (entry.kind != FileKind::directory || !isName(entry.name)) return false;
  const auto status = root.status(entry.name);
  return status && status->kind == FileKind::directory && status->modifiedAt < now - abandonmentAge;
}

}  // namespace

std::string name(const UUID& artifact, const UUID& attempt) {
  return fmt::format(".{}.{}{}", artifact.text(), attempt.text(), suffix);
}

bool isName(std::string_view name) {
  if (!name.starts_with('.') || !name.ends_with(suffix) || name.size() < 1 + suffix.size()) return false;
  const std::string_view identifiers = name.substr(1, name.size() - 1 - suffix.size());
  const std::size_t dot = identifiers.find('.');
  return dot != std::string_view::npos && UUID::parse(identifiers.substr(0, dot)) &&
         UUID::parse(identifiers.substr(dot + 1));
}

void removeAbandoned(Directory& root, Date now) {
  for (const DirectoryEntry& entry : root.entries()) {
    try {
      if (isAbandoned(root, entry, now)) root.remove(entry.name);
    } catch (const FileSystemError&) {
      // It is hidden and harmless; a later create tries again.
    }
  }
}

}  // namespace quillo::StagingDirectory
