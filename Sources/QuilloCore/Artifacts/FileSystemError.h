#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <string>
#include <variant>

namespace quillo {

enum class FileOperation : std::uint8_t { open, list, read, make, write, sync, move, remove };

/// Why the file system did not do what the library asked of it.
class FileSystemError : public std::exception {
 public:
  struct SystemFailure {
    FileOperation operation = FileOperation::open;
    std::filesystem::path path;
    int errorNumber = 0;
    friend bool operator==(const SystemFailure&, const SystemFailure&) = default;
  };
  /// Something else (a link, a pipe, a directory) stands where a file is expected. It was not touched.
  struct NotARegularFile {
    std::filesystem::path path;
    friend bool operator==(const NotARegularFile&, const NotARegularFile&) = default;
  };
  /// Something else (a link, a file) stands where a directory is expected. It was not followed.
  struct NotADirectory {
    std::filesystem::path path;
    friend bool operator==(const NotADirectory&, const NotADirectory&) = default;
  };
  struct TooLarge {
    std::filesystem::path path;
    std::uint64_t limit = 0;  ///< bytes
    friend bool operator==(const TooLarge&, const TooLarge&) = default;
  };
  using Case = std::variant<SystemFailure, NotARegularFile, NotADirectory, TooLarge>;

  // Not explicit: an error is thrown by naming its case.
  FileSystemError(Case value);  // NOLINT(google-explicit-constructor)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  /// Whether the system reported this errno.
  bool isSystemFailure(int errorNumber) const;

  friend bool operator==(const FileSystemError& a, const FileSystemError& b) { return a.value_ == b.value_; }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
