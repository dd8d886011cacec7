#pragma once

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Artifacts/FileSystem.h"
#include "QuilloCore/Preferences/UserDefaults.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// The settings were written by a later version of the program. They are left as they are.
class UnsupportedPreferencesError : public std::exception {
 public:
  UnsupportedPreferencesError(const std::filesystem::path& file, std::int64_t version);

  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::string description_;
};

/// The settings in one file of the user's configuration directory, which only its owner may read:
///
///     {
///       "schemaVersion": 1,
///       "values": {
///         "onboardingVersion": 1
///       }
///     }
///
/// The file is read whenever a value is asked for, so that what another process has changed counts at once, and is
/// replaced in one step whenever one is set; members that are not ours are kept. A file that is no such JSON counts as
/// empty. It is put aside under another name before it would be replaced, so that nothing in it is lost. Of two
/// processes that set values in the very same moment the later one may undo the earlier.
///
/// Setting throws FileSystemError or UnsupportedPreferencesError.
class XdgUserDefaults final : public UserDefaults {
 public:
  static constexpr std::string_view fileName = "preferences.json";

  XdgUserDefaults(FileSystem& fileSystem, UUIDGenerating& identifiers,
                  std::filesystem::path directory = defaultDirectory())
      : fileSystem_(fileSystem), identifiers_(identifiers), directory_(std::move(directory)) {}

  /// `$XDG_CONFIG_HOME/Quillo`, or below `~/.config`; an `XDG_CONFIG_HOME` that is no absolute path counts as none.
  static std::filesystem::path defaultDirectory();

  std::optional<std::string> data(std::string_view key) const override;
  void setData(std::string_view key, std::string_view json) override;
  void remove(std::string_view key) override;

  /// Why the settings cannot be read, in words; nothing when they can, or when there are none.
  std::optional<std::string> problem() const;

  /// Where the last damaged file was put that we had to replace.
  const std::optional<std::filesystem::path>& damagedFile() const { return damagedFile_; }

 private:
  /// JSON texts by key.
  using Members = std::map<std::string, std::string, std::less<>>;
  struct Contents {
    Members values;
    Members otherMembers;  ///< of the file, beside the values
  };

  Contents read() const;
  Contents parse(std::string_view text) const;
  void change(const std::function<void(Members&)>& edit);

  FileSystem& fileSystem_;
  UUIDGenerating& identifiers_;
  std::filesystem::path directory_;
  std::optional<std::filesystem::path> damagedFile_;
};

}  // namespace quillo
