#include "InMemoryFileSystem.h"

#include <cerrno>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace quillo::test {

namespace fs = std::filesystem;
using Inode = InMemoryFileSystem::Inode;
using Entries = std::map<std::string, std::shared_ptr<Inode>, std::less<>>;

struct InMemoryFileSystem::Inode {
  FileKind kind = FileKind::directory;
  Date modifiedAt;
  std::string content;
  std::string contentOnDisk;
  Entries entries;
  Entries entriesOnDisk;
};

namespace {

[[noreturn]] void fail(FileOperation operation, const fs::path& path, int errorNumber) {
  throw FileSystemError(FileSystemError::SystemFailure{operation, path, errorNumber});
}

class InMemoryDirectory final : public Directory {
 public:
  InMemoryDirectory(InMemoryFileSystem& fileSystem, std::shared_ptr<Inode> inode, fs::path path)
      : fileSystem_(fileSystem), inode_(std::move(inode)), path_(std::move(path)) {}

  std::vector<DirectoryEntry> entries() override {
    std::vector<DirectoryEntry> result;
    for (const auto& [name, inode] : inode_->entries) result.push_back({name, inode->kind});
    return result;
  }

  std::optional<FileStatus> status(std::string_view name) override {
    const auto found = inode_->entries.find(name);
    if (found == inode_->entries.end()) return std::nullopt;
    return FileStatus{found->second->kind, found->second->modifiedAt};
  }

  std::unique_ptr<Directory> openDirectory(std::string_view name) override {
    auto inode = require(FileOperation::open, name);
    if (inode->kind != FileKind::directory) throw FileSystemError(FileSystemError::NotADirectory{path_ / name});
    return std::make_unique<InMemoryDirectory>(fileSystem_, std::move(inode), path_ / name);
  }

  std::string readFile(std::string_view name) override {
    const auto inode = require(FileOperation::read, name);
    if (inode->kind != FileKind::regular) throw FileSystemError(FileSystemError::NotARegularFile{path_ / name});
    return inode->content;
  }

  std::unique_ptr<Directory> makeDirectory(std::string_view name) override {
    fileSystem_.step(FileOperation::make, path_ / name);
    add(FileOperation::make, name, FileKind::directory);
    return openDirectory(name);
  }

  void createFile(std::string_view name, std::string_view bytes) override {
    const fs::path path = path_ / name;
    fileSystem_.step(FileOperation::write, path);
    const auto inode = add(FileOperation::write, name, FileKind::regular);
    fileSystem_.step(FileOperation::write, path);
    inode->content = bytes.substr(0, bytes.size() / 2);
    fileSystem_.step(FileOperation::write, path);
    inode->content = bytes;
    fileSystem_.step(FileOperation::sync, path);
    inode->contentOnDisk = inode->content;
  }

  void moveWithoutReplacing(std::string_view name, std::string_view newName) override {
    fileSystem_.step(FileOperation::move, path_ / newName);
    auto inode = require(FileOperation::move, name);
    if (inode_->entries.contains(newName)) fail(FileOperation::move, path_ / newName, EEXIST);
    inode_->entries.erase(std::string(name));
    inode_->entries[std::string(newName)] = std::move(inode);
    touch();
  }

  void replaceFile(std::string_view newFile, std::string_view name) override {
    fileSystem_.step(FileOperation::move, path_ / name);
    auto inode = require(FileOperation::move, newFile);
    inode_->entries.erase(std::string(newFile));
    inode_->entries[std::string(name)] = std::move(inode);
    touch();
  }

  void remove(std::string_view name) override {
    const auto found = inode_->entries.find(name);
    if (found == inode_->entries.end()) return;
    if (found->second->kind == FileKind::directory) {
      InMemoryDirectory directory(fileSystem_, found->second, path_ / name);
      for (const auto& entry : directory.entries()) directory.remove(entry.name);
    }
    fileSystem_.step(FileOperation::remove, path_ / name);
    inode_->entries.erase(found);
    touch();
  }

  void sync() override {
    fileSystem_.step(FileOperation::sync, path_);
    inode_->entriesOnDisk = inode_->entries;
  }

 private:
  std::shared_ptr<Inode> require(FileOperation operation, std::string_view name) {
    const auto found = inode_->entries.find(name);
    if (found == inode_->entries.end()) fail(operation, path_ / name, ENOENT);
    return found->second;
  }

  std::shared_ptr<Inode> add(FileOperation operation, std::string_view name, FileKind kind) {
    auto inode = std::make_shared<Inode>();
    inode->kind = kind;
    inode->modifiedAt = fileSystem_.now;
    if (!inode_->entries.try_emplace(std::string(name), inode).second) fail(operation, path_ / name, EEXIST);
    touch();
    return inode;
  }

  void touch() { inode_->modifiedAt = fileSystem_.now; }

  InMemoryFileSystem& fileSystem_;
  std::shared_ptr<Inode> inode_;
  fs::path path_;
};

/// Copies a tree; `chooseEntries` and `chooseContent` say what of each inode is kept.
std::shared_ptr<Inode> copyTree(const Inode& inode, const std::function<Entries(const Inode&)>& chooseEntries,
                                const std::function<std::string(const Inode&)>& chooseContent) {
  auto copy = std::make_shared<Inode>();
  copy->kind = inode.kind;
  copy->modifiedAt = inode.modifiedAt;
  copy->content = copy->contentOnDisk = chooseContent(inode);
  for (const auto& [name, child] : chooseEntries(inode))
    copy->entries[name] = copyTree(*child, chooseEntries, chooseContent);
  copy->entriesOnDisk = copy->entries;
  return copy;
}

}  // namespace

InMemoryFileSystem::InMemoryFileSystem() : root_(std::make_shared<Inode>()) {}

void InMemoryFileSystem::failAt(int step, int errorNumber) {
  stepCount_ = 0;
  failingStep_ = step;
  errorNumber_ = errorNumber;
}

void InMemoryFileSystem::step(FileOperation operation, const fs::path& path) {
  if (isPowerCut_) throw PowerCut();
  if (++stepCount_ != failingStep_) return;
  if (errorNumber_ != 0) fail(operation, path, errorNumber_);
  isPowerCut_ = true;
  throw PowerCut();
}

std::unique_ptr<Directory> InMemoryFileSystem::openDirectory(const fs::path& path) {
  std::unique_ptr<Directory> directory = std::make_unique<InMemoryDirectory>(*this, root_, "/");
  for (const fs::path& name : path.relative_path()) directory = directory->openDirectory(name.native());
  return directory;
}

std::unique_ptr<Directory> InMemoryFileSystem::makeDirectories(const fs::path& path) {
  std::unique_ptr<Directory> directory = std::make_unique<InMemoryDirectory>(*this, root_, "/");
  for (const fs::path& name : path.relative_path()) {
    if (directory->status(name.native())) {
      directory = directory->openDirectory(name.native());
    } else {
      auto made = directory->makeDirectory(name.native());
      directory->sync();
      directory = std::move(made);
    }
  }
  return directory;
}

InMemoryFileSystem InMemoryFileSystem::afterPowerCut(std::uint64_t seed) const {
  std::mt19937_64 random(seed);
  const auto below = [&](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  const auto chooseEntries = [&](const Inode& inode) {
    Entries names = inode.entriesOnDisk;
    names.insert(inode.entries.begin(), inode.entries.end());
    Entries chosen;
    for (const auto& [name, unused] : names) {
      const Entries& from = below(2) == 0 ? inode.entries : inode.entriesOnDisk;
      if (const auto found = from.find(name); found != from.end()) chosen.insert(*found);
    }
    return chosen;
  };
  const auto chooseContent = [&](const Inode& inode) {
    if (inode.content == inode.contentOnDisk) return inode.content;
    return inode.content.substr(0, below(inode.content.size() + 1));
  };
  InMemoryFileSystem result;
  result.root_ = copyTree(*root_, chooseEntries, chooseContent);
  result.now = now;
  return result;
}

InMemoryFileSystem InMemoryFileSystem::afterProcessDeath() const {
  InMemoryFileSystem result;
  result.root_ = copyTree(
      *root_, [](const Inode& inode) { return inode.entries; }, [](const Inode& inode) { return inode.content; });
  result.now = now;
  return result;
}

}  // namespace quillo::test
