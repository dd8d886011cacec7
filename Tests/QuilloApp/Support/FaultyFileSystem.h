#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "QuilloCore/Artifacts/PosixFileSystem.h"

namespace quillo::test {

/// The real file system, whose disk can be full, and which notes the manifests that were written and the screenshots
/// that were read. The counters are the repository's thread's while it works.
class FaultyFileSystem final : public FileSystem {
 public:
  std::unique_ptr<Directory> openDirectory(const std::filesystem::path& path) override;
  std::unique_ptr<Directory> makeDirectories(const std::filesystem::path& path) override;

  struct Record {
    bool isFull = false;
    int writtenManifestCount = 0;
    std::vector<std::string> readScreenshots;  ///< the names of the bundles
    std::function<void()> beforeWriting;
  };
  std::shared_ptr<Record> record = std::make_shared<Record>();

 private:
  PosixFileSystem real_;
};

}  // namespace quillo::test
