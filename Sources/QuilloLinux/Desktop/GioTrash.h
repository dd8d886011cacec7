#pragma once

#include "QuilloCore/Artifacts/TrashOperation.h"

namespace quillo {

/// The freedesktop Trash: the one of the user's home, or the one of the file system where the item lies. Blocking; from
/// any thread. Where the item went is looked up in the Trash's own records, because the system call does not say it.
class GioTrash final : public TrashOperation {
 public:
  std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& path) override;
  void restore(const std::filesystem::path& trashed, const std::filesystem::path& original) override;
};

}  // namespace quillo
