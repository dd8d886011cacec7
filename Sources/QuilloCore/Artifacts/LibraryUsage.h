#pragma once

#include <cstdint>
#include <filesystem>

namespace quillo {

/// What the captures take on the disk.
struct LibraryUsage {
  std::int64_t captureCount = 0;  ///< bundles, damaged ones included
  std::int64_t byteCount = 0;     ///< of all files below the library's directory, as long as they are

  friend bool operator==(const LibraryUsage&, const LibraryUsage&) = default;
};

/// Counts what lies in the library's directory now. Follows no symbolic link below it and does not throw: what cannot
/// be read, or vanishes meanwhile, counts nothing.
LibraryUsage measureLibraryUsage(const std::filesystem::path& libraryPath);

}  // namespace quillo
