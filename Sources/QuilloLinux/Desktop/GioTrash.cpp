#include "QuilloLinux/Desktop/GioTrash.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

#include "QuilloLinux/Desktop/TrashRecords.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

struct UnrefObject {
  void operator()(void* object) const { g_object_unref(object); }
};
struct FreeError {
  void operator()(GError* error) const { g_error_free(error); }
};

/// The highest directory above `path` that lies on the same file system.
fs::path topOfFileSystem(const fs::path& path) {
  struct stat status{};
  fs::path top = path.parent_path();
  if (::stat(top.c_str(), &status) != 0) return top;
  const dev_t device = status.st_dev;
  while (top.has_relative_path() && ::stat(top.parent_path().c_str(), &status) == 0 && status.st_dev == device)
    top = top.parent_path();
  return top;
}

std::optional<fs::path> findInTrash(const fs::path& original) {
  if (auto found = TrashRecords::find(fs::path(g_get_user_data_dir()) / "Trash", "/", original)) return found;
  const fs::path top = topOfFileSystem(original);
  const std::string user = std::to_string(::getuid());
  for (const fs::path& trash : {top / ".Trash" / user, top / (".Trash-" + user)}) {
    if (auto found = TrashRecords::find(trash, top, original)) return found;
  }
  return std::nullopt;
}

}  // namespace

std::optional<fs::path> GioTrash::moveToTrash(const fs::path& path) {
  const std::unique_ptr<GFile, UnrefObject> file(g_file_new_for_path(path.c_str()));
  GError* rawError = nullptr;
  const bool isMoved = g_file_trash(file.get(), nullptr, &rawError) != FALSE;
  const std::unique_ptr<GError, FreeError> error(rawError);
  if (!isMoved) throw TrashError(error ? error->message : "the system gave no reason");
  return findInTrash(path);
}

void GioTrash::restore(const fs::path& trashed, const fs::path& original) {
  int result = ::renameat2(AT_FDCWD, trashed.c_str(), AT_FDCWD, original.c_str(), RENAME_NOREPLACE);
  if (result != 0 && (errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP)) {
    // A file system that cannot refuse: look first. An empty directory is all that a rename could still replace.
    struct stat status{};
    if (::lstat(original.c_str(), &status) == 0) {
      errno = EEXIST;
    } else {
      result = ::rename(trashed.c_str(), original.c_str());
    }
  }
  if (result != 0) {
    if (errno == ENOENT && !fs::exists(fs::symlink_status(trashed))) throw TrashError("it is no longer in the Trash");
    throw TrashError(std::generic_category().message(errno));
  }
  std::error_code failure;
  fs::remove(TrashRecords::recordOf(trashed), failure);  // a record without its item is ignored, and swept up later
}

}  // namespace quillo
