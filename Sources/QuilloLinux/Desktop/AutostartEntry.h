#pragma once

#include <filesystem>
#include <string>
#include <utility>

#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Preferences/LoginItem.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// Whether the desktop starts the application when the user logs in: an entry in the user's autostart directory.
class AutostartEntry final : public LoginItem {
 public:
  /// `program` is what is started, by its absolute path or a name that the desktop finds.
  AutostartEntry(FileSystem& fileSystem, UUIDGenerating& identifiers, std::filesystem::path program,
                 std::filesystem::path directory = defaultDirectory())
      : fileSystem_(fileSystem),
        identifiers_(identifiers),
        program_(std::move(program)),
        directory_(std::move(directory)) {}

  /// `$XDG_CONFIG_HOME/autostart`, or below `~/.config`.
  static std::filesystem::path defaultDirectory();

  /// False, too, when the entry is there but switched off, or cannot be read.
  bool isEnabled() const override;

  /// Throws FileSystemError.
  void setEnabled(bool isEnabled) override;

 private:
  std::string text() const;

  FileSystem& fileSystem_;
  UUIDGenerating& identifiers_;
  std::filesystem::path program_;
  std::filesystem::path directory_;
};

}  // namespace quillo
