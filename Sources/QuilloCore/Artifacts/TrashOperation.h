#pragma once

#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

/// Why something could not be moved to the Trash, in words for the user.
class TrashError : public std::exception {
 public:
  explicit TrashError(std::string reason) : reason_(std::move(reason)) {}

  const std::string& errorDescription() const { return reason_; }
  const char* what() const noexcept override { return reason_.c_str(); }

  friend bool operator==(const TrashError& a, const TrashError& b) { return a.reason_ == b.reason_; }

 private:
  std::string reason_;
};

/// Moves a file or directory to the user's Trash in one step, and back again.
class TrashOperation {
 public:
  virtual ~TrashOperation() = default;

  /// Returns where it is now, if the system says so. Throws TrashError; the item is then where it was.
  virtual std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& path) = 0;

  /// Puts an item back whose place in the Trash `moveToTrash` returned, in one step, and replaces nothing. Throws
  /// TrashError; the item is then still in the Trash, unless it was not there any more.
  virtual void restore(const std::filesystem::path& trashed, const std::filesystem::path& original) = 0;
};

}  // namespace quillo
