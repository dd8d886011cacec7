#include "QuilloLinux/Desktop/TrashRecords.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace quillo::TrashRecords {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view recordExtension = ".trashinfo";

int hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::string decodingPercents(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? hexadecimalDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? hexadecimalDigit(text[i + 2]) : -1;
    if (low < 0) {
      result += text[i];
      continue;
    }
    result += static_cast<char>(16 * high + low);
    i += 2;
  }
  return result;
}

std::string readRecord(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

std::optional<fs::path> originalPath(std::string_view record) {
  constexpr std::string_view header = "[Trash Info]";
  constexpr std::string_view key = "Path=";
  if (!record.starts_with(header)) return std::nullopt;
  while (!record.empty()) {
    const std::size_t end = std::min(record.find('\n'), record.size());
    const std::string_view line = record.substr(0, end);
    if (line.starts_with(key)) return fs::path(decodingPercents(line.substr(key.size())));
    record.remove_prefix(std::min(end + 1, record.size()));
  }
  return std::nullopt;
}

std::optional<fs::path> find(const fs::path& trash, const fs::path& top, const fs::path& original) {
  // A second item of a name gets a number between the stem and the extension.
  const std::string stem = original.stem().string();
  std::optional<fs::path> found;
  fs::file_time_type foundTime;
  std::error_code failure;
  for (fs::directory_iterator entry(trash / "info", failure), end; !failure && entry != end; entry.increment(failure)) {
    const fs::path& record = entry->path();
    if (record.extension() != recordExtension || !record.filename().string().starts_with(stem)) continue;
    const auto recorded = originalPath(readRecord(record));
    if (!recorded || (top / *recorded).lexically_normal() != original.lexically_normal()) continue;
    std::error_code unreadable;
    const fs::file_time_type time = fs::last_write_time(record, unreadable);
    const fs::path item = trash / "files" / record.stem();
    if (unreadable || !fs::exists(fs::symlink_status(item, unreadable)) || (found && time < foundTime)) continue;
    found = item;
    foundTime = time;
  }
  return found;
}

fs::path recordOf(const fs::path& trashed) {
  return trashed.parent_path().parent_path() / "info" / (trashed.filename().string() + std::string(recordExtension));
}

}  // namespace quillo::TrashRecords
