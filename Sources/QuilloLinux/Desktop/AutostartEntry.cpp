#include "QuilloLinux/Desktop/AutostartEntry.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "QuilloCore/Artifacts/FileSystemError.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view fileName = "org.quillo.Quillo.desktop";

/// A program's path as the entry's command line wants it: quoted, and escaped once more as every text of the file is.
std::string quoted(const std::string& path) {
  std::string text = "\"";
  for (const char c : path) {
    switch (c) {
      case '"':
      case '`':
      case '$': text.append("\\\\").push_back(c); break;
      case '\\': text += "\\\\\\\\"; break;
      case '%': text += "%%"; break;
      case '\n': text += "\\n"; break;
      default: text.push_back(c);
    }
  }
  return text + "\"";
}

/// Whether desktops skip an entry with this line.
bool switchesOff(std::string_view line) {
  const std::size_t sign = line.find('=');
  if (sign == std::string_view::npos) return false;
  const std::string_view key = trimmingWhiteSpace(line.substr(0, sign));
  const std::string_view value = trimmingWhiteSpace(line.substr(sign + 1));
  return (key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false");
}

}  // namespace

fs::path AutostartEntry::defaultDirectory() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return fs::path(value == nullptr ? "" : value);
  };
  fs::path configuration = variable("XDG_CONFIG_HOME");
  if (!configuration.is_absolute()) configuration = variable("HOME") / ".config";
  return configuration / "autostart";
}

bool AutostartEntry::isEnabled() const {
  try {
    const std::string contents = fileSystem_.openDirectory(directory_)->readFile(fileName);
    std::string_view rest = contents;
    while (!rest.empty()) {
      const std::size_t end = rest.find('\n');
      if (switchesOff(rest.substr(0, end))) return false;
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return true;
  } catch (const FileSystemError&) {
    return false;
  }
}

void AutostartEntry::setEnabled(bool isEnabled) {
  if (isEnabled) {
    const auto directory = fileSystem_.makeDirectories(directory_);
    const std::string newName = fmt::format(".{}.{}", fileName, identifiers_.makeUUID().text());
    directory->createFile(newName, text());
    directory->replaceFile(newName, fileName);
    directory->sync();
    return;
  }
  try {
    const auto directory = fileSystem_.openDirectory(directory_);
    directory->remove(fileName);
    directory->sync();
  } catch (const FileSystemError& error) {
    if (!error.isSystemFailure(ENOENT)) throw;
  }
}

std::string AutostartEntry::text() const {
  return fmt::format(
      "[Desktop Entry]\n"
      "Type=Application\n"
      "Name=Quillo\n"
      "Comment=Keep Quillo's shortcuts and tray icon ready\n"
      "Exec={} --background\n"
      "Icon=org.quillo.Quillo\n"
      "Terminal=false\n"
      "NoDisplay=true\n"
      "StartupNotify=false\n"
      "X-GNOME-Autostart-enabled=true\n",
      quoted(program_.native()));
}

}  // namespace quillo
