#include "QuilloCore/Artifacts/PosixFileSystem.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "QuilloCore/Artifacts/FileSystemError.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

constexpr mode_t directoryMode = 0700;
constexpr mode_t fileMode = 0600;
constexpr std::size_t readingMargin = 128;  // lets what parses the bytes look a little behind them
constexpr int directoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

struct CloseDirectory {
  void operator()(DIR* directory) const { ::closedir(directory); }
};
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

/// Calls again what a signal interrupted.
template <class Call>
auto retrying(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

FileKind kindOf(mode_t mode) {
  if (S_ISREG(mode)) return FileKind::regular;
  if (S_ISDIR(mode)) return FileKind::directory;
  if (S_ISLNK(mode)) return FileKind::symbolicLink;
  return FileKind::other;
}

class PosixDirectory final : public Directory {
 public:
  PosixDirectory(Descriptor descriptor, fs::path path, std::uint64_t fileSizeLimit,
                 PosixFileSystem::ExclusiveMove exclusiveMove)
      : descriptor_(std::move(descriptor)),
        path_(std::move(path)),
        fileSizeLimit_(fileSizeLimit),
        exclusiveMove_(exclusiveMove) {}

  std::vector<DirectoryEntry> entries() override {
    const DirectoryStream stream = openStream(descriptor_.get());
    if (!stream) fail(FileOperation::list, path_);
    std::vector<DirectoryEntry> result;
    for (errno = 0; const dirent* entry = ::readdir(stream.get()); errno = 0) {
      const std::string_view name = entry->d_name;
      if (name != "." && name != "..") result.push_back({std::string(name), kindOfEntry(*entry)});
    }
    if (errno != 0) fail(FileOperation::list, path_);
    return result;
  }

  std::optional<FileStatus> status(std::string_view name) override {
    struct stat status{};
    if (::fstatat(descriptor_.get(), std::string(name).c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
      const auto sinceEpoch =
          std::chrono::seconds{status.st_mtim.tv_sec} + std::chrono::nanoseconds{status.st_mtim.tv_nsec};
      return FileStatus{kindOf(status.st_mode), Date{std::chrono::floor<std::chrono::microseconds>(sinceEpoch)}};
    }
    if (errno == ENOENT) return std::nullopt;
    fail(FileOperation::open, path_ / name);
  }

  std::unique_ptr<Directory> openDirectory(std::string_view name) override {
    const fs::path path = path_ / name;
    Descriptor descriptor(
        retrying([&] { return ::openat(descriptor_.get(), path.filename().c_str(), directoryFlags | O_NOFOLLOW); }));
    if (descriptor) return makeSame(std::move(descriptor), path);
    if (errno == ENOTDIR || errno == ELOOP) throw FileSystemError(FileSystemError::NotADirectory{path});
    fail(FileOperation::open, path);
  }

  std::string readFile(std::string_view name) override {
    const fs::path path = path_ / name;
    const std::string entry(name);
    // Looked at before opening too, since opening a device can have effects.
    struct stat status{};
    if (::fstatat(descriptor_.get(), entry.c_str(), &status, AT_SYMLINK_NOFOLLOW) < 0) fail(FileOperation::read, path);
    if (!S_ISREG(status.st_mode)) throw FileSystemError(FileSystemError::NotARegularFile{path});
    const Descriptor file(retrying([&] {
      return ::openat(descriptor_.get(), entry.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }));
    if (!file && errno == ELOOP) throw FileSystemError(FileSystemError::NotARegularFile{path});
    if (!file || ::fstat(file.get(), &status) < 0) fail(FileOperation::read, path);
    if (!S_ISREG(status.st_mode)) throw FileSystemError(FileSystemError::NotARegularFile{path});
    return readWhole(file.get(), path, static_cast<std::uint64_t>(status.st_size));
  }

  std::unique_ptr<Directory> makeDirectory(std::string_view name) override {
    const fs::path path = path_ / name;
    if (::mkdirat(descriptor_.get(), path.filename().c_str(), directoryMode) < 0) fail(FileOperation::make, path);
    try {
      // The umask may have taken bits away.
      if (::fchmodat(descriptor_.get(), path.filename().c_str(), directoryMode, 0) < 0) fail(FileOperation::make, path);
      return openDirectory(name);
    } catch (...) {
      ::unlinkat(descriptor_.get(), path.filename().c_str(), AT_REMOVEDIR);
      throw;
    }
  }

  void createFile(std::string_view name, std::string_view bytes) override {
    const fs::path path = path_ / name;
    Descriptor file(retrying([&] {
      return ::openat(descriptor_.get(), path.filename().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                      fileMode);
    }));
    if (!file || ::fchmod(file.get(), fileMode) < 0) fail(FileOperation::write, path);
    while (!bytes.empty()) {
      const ssize_t count = retrying([&] { return ::write(file.get(), bytes.data(), bytes.size()); });
      if (count < 0) fail(FileOperation::write, path);
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (retrying([&] { return ::fsync(file.get()); }) < 0) fail(FileOperation::sync, path);
    // A full quota of a network file system can show as late as here.
    if (::close(file.release()) < 0 && errno != EINTR) fail(FileOperation::write, path);
  }

  void moveWithoutReplacing(std::string_view name, std::string_view newName) override {
    const std::string from(name);
    const std::string to(newName);
    if (exclusiveMove_ == PosixFileSystem::ExclusiveMove::byTheKernel) {
      if (::renameat2(descriptor_.get(), from.c_str(), descriptor_.get(), to.c_str(), RENAME_NOREPLACE) == 0) return;
      const bool isUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
      if (!isUnknown) fail(FileOperation::move, path_ / newName);
    }
    moveLookingFirst(from, to);
  }

  void replaceFile(std::string_view newFile, std::string_view name) override {
    const int result =
        ::renameat(descriptor_.get(), std::string(newFile).c_str(), descriptor_.get(), std::string(name).c_str());
    if (result < 0) fail(FileOperation::move, path_ / name);
  }

  void remove(std::string_view name) override { removeTree(descriptor_.get(), std::string(name), path_ / name); }

  void sync() override {
    if (retrying([&] { return ::fsync(descriptor_.get()); }) == 0) return;
    // Some file systems have no way to sync a directory; they say so in this way.
    if (errno != EINVAL && errno != EOPNOTSUPP) fail(FileOperation::sync, path_);
  }

 private:
  [[noreturn]] static void fail(FileOperation operation, fs::path path) {
    throw FileSystemError(FileSystemError::SystemFailure{operation, std::move(path), errno});
  }

  std::unique_ptr<Directory> makeSame(Descriptor descriptor, const fs::path& path) const {
    return std::make_unique<PosixDirectory>(std::move(descriptor), path, fileSizeLimit_, exclusiveMove_);
  }

  static DirectoryStream openStream(int directory) {
    // A new open file, because two streams over one would share their position.
    Descriptor copy(retrying([&] { return ::openat(directory, ".", directoryFlags); }));
    if (!copy) return nullptr;
    DirectoryStream stream(::fdopendir(copy.get()));
    if (stream) copy.release();
    return stream;
  }

  FileKind kindOfEntry(const dirent& entry) {
    switch (entry.d_type) {
      case DT_REG: return FileKind::regular;
      case DT_DIR: return FileKind::directory;
      case DT_LNK: return FileKind::symbolicLink;
      case DT_UNKNOWN: {
        const auto found = status(entry.d_name);
        return found ? found->kind : FileKind::other;
      }
      default: return FileKind::other;
    }
  }

  std::string readWhole(int file, const fs::path& path, std::uint64_t expectedSize) const {
    std::string bytes;
    if (expectedSize <= fileSizeLimit_) bytes.reserve(expectedSize + readingMargin);
    // One byte more than expected, so that the end shows in the first read.
    for (std::uint64_t capacity = expectedSize + 1;; capacity = 2 * capacity) {
      if (bytes.size() > fileSizeLimit_ || expectedSize > fileSizeLimit_)
        throw FileSystemError(FileSystemError::TooLarge{path, fileSizeLimit_});
      bool isAtEnd = false;
      int error = 0;
      const std::size_t start = bytes.size();
      bytes.resize_and_overwrite(capacity, [&](char* data, std::size_t size) {
        std::size_t filled = start;
        while (filled < size) {
          const ssize_t count = retrying([&] { return ::read(file, data + filled, size - filled); });
          if (count < 0) error = errno;
          isAtEnd = count <= 0;
          if (isAtEnd) break;
          filled += static_cast<std::size_t>(count);
        }
        return filled;
      });
      errno = error;
      if (error != 0) fail(FileOperation::read, path);
      if (isAtEnd) return bytes;
    }
  }

  void moveLookingFirst(const std::string& from, const std::string& to) {
    const fs::path path = path_ / to;
    if (status(to)) {
      errno = EEXIST;
      fail(FileOperation::move, path);
    }
    const auto moved = status(from);
    if (!moved || moved->kind == FileKind::directory) {
      if (::renameat(descriptor_.get(), from.c_str(), descriptor_.get(), to.c_str()) < 0)
        fail(FileOperation::move, path);
      return;
    }
    // A second name for a file is refused when it is taken; then the first name goes.
    if (::linkat(descriptor_.get(), from.c_str(), descriptor_.get(), to.c_str(), 0) < 0 ||
        ::unlinkat(descriptor_.get(), from.c_str(), 0) < 0)
      fail(FileOperation::move, path);
  }

  /// Recursive: each level holds a descriptor, of which a process has few, so that a hostile depth fails early.
  static void removeTree(int parent, const std::string& name, const fs::path& path) {
    if (::unlinkat(parent, name.c_str(), 0) == 0 || errno == ENOENT) return;
    if (errno != EISDIR && errno != EPERM) fail(FileOperation::remove, path);
    const Descriptor directory(retrying([&] { return ::openat(parent, name.c_str(), directoryFlags | O_NOFOLLOW); }));
    const DirectoryStream stream = directory ? openStream(directory.get()) : nullptr;
    if (!stream) fail(FileOperation::remove, path);
    std::vector<std::string> names;
    for (errno = 0; const dirent* entry = ::readdir(stream.get()); errno = 0) names.emplace_back(entry->d_name);
    if (errno != 0) fail(FileOperation::remove, path);
    for (const auto& child : names) {
      if (child != "." && child != "..") removeTree(directory.get(), child, path / child);
    }
    if (::unlinkat(parent, name.c_str(), AT_REMOVEDIR) < 0 && errno != ENOENT) fail(FileOperation::remove, path);
  }

  Descriptor descriptor_;
  fs::path path_;
  std::uint64_t fileSizeLimit_;
  PosixFileSystem::ExclusiveMove exclusiveMove_;
};

}  // namespace

std::unique_ptr<Directory> PosixFileSystem::openDirectory(const fs::path& path) {
  Descriptor descriptor(retrying([&] { return ::open(path.c_str(), directoryFlags); }));
  if (!descriptor && errno == ENOTDIR) throw FileSystemError(FileSystemError::NotADirectory{path});
  if (!descriptor) throw FileSystemError(FileSystemError::SystemFailure{FileOperation::open, path, errno});
  return std::make_unique<PosixDirectory>(std::move(descriptor), path, fileSizeLimit_, exclusiveMove_);
}

std::unique_ptr<Directory> PosixFileSystem::makeDirectories(const fs::path& path) {
  try {
    return openDirectory(path);
  } catch (const FileSystemError& error) {
    if (!error.isSystemFailure(ENOENT) || !path.has_relative_path()) throw;
  }
  const fs::path name = path.filename();
  if (name.empty()) return makeDirectories(path.parent_path());
  const std::unique_ptr<Directory> parent = makeDirectories(path.has_parent_path() ? path.parent_path() : ".");
  try {
    auto made = parent->makeDirectory(name.native());
    parent->sync();
    return made;
  } catch (const FileSystemError& error) {
    // Another process was faster.
    if (!error.isSystemFailure(EEXIST)) throw;
    return openDirectory(path);
  }
}

}  // namespace quillo
