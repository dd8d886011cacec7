#include "QuilloCore/Artifacts/LibraryUsage.h"

#include <system_error>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

/// Calls `visit` for each entry of the directory that can still be read.
template <class Visit>
void forEachEntry(const fs::path& directory, const Visit& visit) {
  std::error_code failure;
  for (fs::directory_iterator entry(directory, failure); !failure && entry != fs::directory_iterator();
       entry.increment(failure)) {
    visit(*entry);
  }
}

std::int64_t bytesBelow(const fs::path& directory) {
  std::int64_t bytes = 0;
  std::error_code failure;
  constexpr auto options = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(directory, options, failure);
       !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
    std::error_code vanished;
    if (entry->is_symlink(vanished) || !entry->is_regular_file(vanished)) continue;
    const std::uintmax_t size = entry->file_size(vanished);
    if (!vanished) bytes += static_cast<std::int64_t>(size);
  }
  return bytes;
}

}  // namespace

LibraryUsage measureLibraryUsage(const fs::path& libraryPath) {
  LibraryUsage usage{.captureCount = 0, .byteCount = bytesBelow(libraryPath)};
  forEachEntry(libraryPath, [&](const fs::directory_entry& entry) {
    std::error_code vanished;
    if (ArtifactBundleLayout::isBundleName(entry.path().filename().native()) && !entry.is_symlink(vanished) &&
        entry.is_directory(vanished))
      ++usage.captureCount;
  });
  return usage;
}

}  // namespace quillo
