#pragma once

#include <filesystem>
#include <string_view>

namespace quillo::test {

/// A directory of its own for one test, removed with everything in it at the end.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// Writes a file, making the directories that are missing. Throws std::runtime_error.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace quillo::test
