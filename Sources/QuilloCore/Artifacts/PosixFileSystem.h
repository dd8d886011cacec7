#pragma once

#include <cstdint>

#include "QuilloCore/Artifacts/FileSystem.h"

namespace quillo {

/// The real file system.
class PosixFileSystem final : public FileSystem {
 public:
  /// No file of ours comes near; a hostile one shall not fill the memory.
  static constexpr std::uint64_t defaultFileSizeLimit = std::uint64_t{1} << 30U;

  /// How a move avoids replacing: by the kernel, or by looking first where the file system cannot. For directories the
  /// second is nearly as safe, because the system itself refuses to replace one that holds something.
  enum class ExclusiveMove : std::uint8_t { byTheKernel, byLookingFirst };

  explicit PosixFileSystem(std::uint64_t fileSizeLimit = defaultFileSizeLimit,
                           ExclusiveMove exclusiveMove = ExclusiveMove::byTheKernel)
      : fileSizeLimit_(fileSizeLimit), exclusiveMove_(exclusiveMove) {}

  std::unique_ptr<Directory> openDirectory(const std::filesystem::path& path) override;
  std::unique_ptr<Directory> makeDirectories(const std::filesystem::path& path) override;

 private:
  std::uint64_t fileSizeLimit_;
  ExclusiveMove exclusiveMove_;
};

}  // namespace quillo
