#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace quillo::TrashRecords {

/// The path that the record (a ".trashinfo" file) says its item came from, as written: absolute, or relative to the
/// top of the file system that the Trash belongs to. Nothing when the text is no such record.
std::optional<std::filesystem::path> originalPath(std::string_view record);

/// Where the item that was trashed last from `original` lies in a Trash directory (with its "files" and "info"), whose
/// relative paths begin at `top`.
std::optional<std::filesystem::path> find(const std::filesystem::path& trash, const std::filesystem::path& top,
                                          const std::filesystem::path& original);

/// Where the record of an item lies that is itself at `trashed`.
std::filesystem::path recordOf(const std::filesystem::path& trashed);

}  // namespace quillo::TrashRecords
