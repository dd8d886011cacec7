#pragma once

#include <cstdint>
#include <exception>
#include <memory>

#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Support/Date.h"

namespace quillo::test {

/// Ends a test's program as a power cut would: nothing that comes later reaches the disk.
struct PowerCut : std::exception {
  const char* what() const noexcept override { return "the power was cut"; }
};

/// A file system that knows what has reached the disk. Every change is one step (writing a file is four); at a chosen
/// step it fails with an errno, or the power is cut.
class InMemoryFileSystem final : public FileSystem {
 public:
  InMemoryFileSystem();

  std::unique_ptr<Directory> openDirectory(const std::filesystem::path& path) override;
  std::unique_ptr<Directory> makeDirectories(const std::filesystem::path& path) override;

  /// The next `step`th change fails once with `errorNumber`; with 0 the power is cut there.
  void failAt(int step, int errorNumber);

  /// What a disk may hold after the power was cut: of every change that was not synced, some have reached it and some
  /// have not, as the seed says. A file that was being written may hold a part.
  InMemoryFileSystem afterPowerCut(std::uint64_t seed) const;
  /// What other processes see when only ours has died: every change that was made.
  InMemoryFileSystem afterProcessDeath() const;

  Date now;  ///< stamps what changes

  struct Inode;
  void step(FileOperation operation, const std::filesystem::path& path);

 private:
  std::shared_ptr<Inode> root_;
  int stepCount_ = 0;
  int failingStep_ = 0;
  int errorNumber_ = 0;
  bool isPowerCut_ = false;
};

}  // namespace quillo::test
