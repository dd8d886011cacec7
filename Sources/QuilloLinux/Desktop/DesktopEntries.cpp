#include "QuilloLinux/Desktop/DesktopEntries.h"

#include <gio/gio.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

// The toolkit's own list of applications would do, but it reads every entry, looks for every program on the path and
// begins to watch the folders: as much work as reading a small window.

namespace quillo::DesktopEntries {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ending = ".desktop";

struct FreeKeyFile {
  void operator()(GKeyFile* file) const { g_key_file_free(file); }
};
struct FreeText {
  void operator()(char* text) const { g_free(text); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;
using Text = std::unique_ptr<char, FreeText>;

std::string environmentOr(const char* name, std::string otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? value : std::move(otherwise);
}

/// The folders that hold entries, the user's own first (XDG Base Directory Specification).
std::vector<fs::path> applicationFolders() {
  std::vector<fs::path> folders = {
      fs::path(environmentOr("XDG_DATA_HOME", environmentOr("HOME", "") + "/.local/share")) / "applications"};
  std::istringstream shared(environmentOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
  for (std::string folder; std::getline(shared, folder, ':');) {
    if (folder.starts_with('/')) folders.push_back(fs::path(folder) / "applications");
  }
  return folders;
}

/// Nothing when the file is no entry of an application, or is marked as deleted.
std::optional<DesktopEntry> readEntry(const fs::path& path, const std::string& id) {
  const KeyFile file(g_key_file_new());
  if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) == 0) return std::nullopt;
  if (g_key_file_get_boolean(file.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr) != 0) {
    return std::nullopt;
  }
  const Text name(g_key_file_get_locale_string(file.get(), G_KEY_FILE_DESKTOP_GROUP, G_KEY_FILE_DESKTOP_KEY_NAME,
                                               nullptr, nullptr));
  if (!name) return std::nullopt;
  return DesktopEntry{replacingInvalidUtf8(id), bringingToOneLine(replacingInvalidUtf8(name.get()))};
}

std::optional<DesktopEntry> findById(const std::vector<fs::path>& folders, const std::string& id) {
  if (id.find('/') != std::string::npos) return std::nullopt;
  for (const fs::path& folder : folders) {
    const fs::path path = folder / (id + std::string(ending));
    std::error_code error;
    if (fs::is_regular_file(path, error)) return readEntry(path, id);
  }
  return std::nullopt;
}

/// An entry's start-up class, as it stands in the file.
std::string startupClassOf(const fs::path& path) {
  constexpr std::string_view key = "StartupWMClass=";
  std::ifstream file(path, std::ios::binary);
  const std::string content((std::istreambuf_iterator<char>(file)), {});
  std::size_t at = content.starts_with(key) ? 0 : content.find("\n" + std::string(key));
  if (at == std::string::npos) return {};
  at = content.find('=', at) + 1;
  const std::size_t end = std::min(content.find_first_of("\r\n", at), content.size());
  return replacingInvalidUtf8(content.substr(at, end - at));
}

std::optional<DesktopEntry> findByStartupClass(const std::vector<fs::path>& folders, const std::string& windowClass) {
  const std::string wanted = lowercased(windowClass);
  for (const fs::path& folder : folders) {
    std::vector<fs::path> paths;
    std::error_code error;
    for (fs::recursive_directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
      if (at->path().extension() == ending && at->is_regular_file(error)) paths.push_back(at->path());
    }
    std::ranges::sort(paths);  // two entries of one class are told apart in the same way every time
    for (const fs::path& path : paths) {
      if (lowercased(startupClassOf(path)) != wanted) continue;
      std::string id = path.lexically_relative(folder).string();
      id.resize(id.size() - ending.size());
      std::ranges::replace(id, '/', '-');
      if (auto entry = readEntry(path, id)) return entry;
    }
  }
  return std::nullopt;
}

}  // namespace

std::optional<DesktopEntry> findByWindowClass(const std::string& windowClass) {
  if (windowClass.empty()) return std::nullopt;
  const std::vector<fs::path> folders = applicationFolders();
  if (auto entry = findById(folders, windowClass)) return entry;
  if (auto entry = findById(folders, lowercased(windowClass))) return entry;
  return findByStartupClass(folders, windowClass);
}

}  // namespace quillo::DesktopEntries
