#include "FaultyFileSystem.h"

#include <cerrno>
#include <utility>

#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo::test {
namespace {

using Record = FaultyFileSystem::Record;

class FaultyDirectory final : public Directory {
 public:
  FaultyDirectory(std::unique_ptr<Directory> real, std::string name, std::shared_ptr<Record> record)
      : real_(std::move(real)), name_(std::move(name)), record_(std::move(record)) {}

  std::vector<DirectoryEntry> entries() override { return real_->entries(); }
  std::optional<FileStatus> status(std::string_view name) override { return real_->status(name); }
  std::unique_ptr<Directory> openDirectory(std::string_view name) override {
    return std::make_unique<FaultyDirectory>(real_->openDirectory(name), std::string(name), record_);
  }
  std::string readFile(std::string_view name) override {
    if (name == "screenshot.png") record_->readScreenshots.push_back(name_);
    return real_->readFile(name);
  }
  std::unique_ptr<Directory> makeDirectory(std::string_view name) override {
    failWhenFull(FileOperation::make, name);
    return std::make_unique<FaultyDirectory>(real_->makeDirectory(name), std::string(name), record_);
  }
  void createFile(std::string_view name, std::string_view bytes) override {
    if (record_->beforeWriting) record_->beforeWriting();
    failWhenFull(FileOperation::write, name);
    if (bytes.starts_with("{") && bytes.contains("\"annotations\"")) ++record_->writtenManifestCount;
    real_->createFile(name, bytes);
  }
  void moveWithoutReplacing(std::string_view name, std::string_view newName) override {
    real_->moveWithoutReplacing(name, newName);
  }
  void replaceFile(std::string_view newFile, std::string_view name) override { real_->replaceFile(newFile, name); }
  void remove(std::string_view name) override { real_->remove(name); }
  void sync() override { real_->sync(); }

 private:
  void failWhenFull(FileOperation operation, std::string_view name) const {
    if (record_->isFull) throw FileSystemError(FileSystemError::SystemFailure{operation, name, ENOSPC});
  }

  std::unique_ptr<Directory> real_;
  std::string name_;
  std::shared_ptr<Record> record_;
};

}  // namespace

std::unique_ptr<Directory> FaultyFileSystem::openDirectory(const std::filesystem::path& path) {
  return std::make_unique<FaultyDirectory>(real_.openDirectory(path), path.filename().string(), record);
}

std::unique_ptr<Directory> FaultyFileSystem::makeDirectories(const std::filesystem::path& path) {
  return std::make_unique<FaultyDirectory>(real_.makeDirectories(path), path.filename().string(), record);
}

}  // namespace quillo::test
