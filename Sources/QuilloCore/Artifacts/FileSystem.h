#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Support/Date.h"

namespace quillo {

enum class FileKind : std::uint8_t { regular, directory, symbolicLink, other };

struct DirectoryEntry {
  std::string name;
  FileKind kind = FileKind::other;

  friend bool operator==(const DirectoryEntry&, const DirectoryEntry&) = default;
};

struct FileStatus {
  FileKind kind = FileKind::other;
  Date modifiedAt;

  friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// An open directory. It stays the same directory when its name is given to another one meanwhile. Names are single
/// components; symbolic links are never followed. Every function throws FileSystemError.
class Directory {
 public:
  virtual ~Directory() = default;

  /// Everything in it but "." and "..", in no order.
  virtual std::vector<DirectoryEntry> entries() = 0;
  /// Nothing when there is no entry of that name.
  virtual std::optional<FileStatus> status(std::string_view name) = 0;
  virtual std::unique_ptr<Directory> openDirectory(std::string_view name) = 0;
  /// The bytes of a regular file.
  virtual std::string readFile(std::string_view name) = 0;

  /// A new directory that only its owner may enter (0700).
  virtual std::unique_ptr<Directory> makeDirectory(std::string_view name) = 0;
  /// A new file that only its owner may read and write (0600). When it returns the bytes have reached the disk, though
  /// the name has not before `sync`.
  virtual void createFile(std::string_view name, std::string_view bytes) = 0;
  /// Gives an entry another name; fails (EEXIST) when that is taken.
  virtual void moveWithoutReplacing(std::string_view name, std::string_view newName) = 0;
  /// Gives a file the name of another one, which disappears in the same instant.
  virtual void replaceFile(std::string_view newFile, std::string_view name) = 0;
  /// Removes an entry with everything below it. That there is none is no failure.
  virtual void remove(std::string_view name) = 0;
  /// Returns when every change of names in this directory has reached the disk.
  virtual void sync() = 0;
};

/// The file system as the library uses it, so that tests can make it fail at any step.
class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Follows symbolic links: where a library lies is the user's choice.
  virtual std::unique_ptr<Directory> openDirectory(const std::filesystem::path& path) = 0;
  /// As `openDirectory`, but makes what is missing of the path (0700).
  virtual std::unique_ptr<Directory> makeDirectories(const std::filesystem::path& path) = 0;
};

}  // namespace quillo
