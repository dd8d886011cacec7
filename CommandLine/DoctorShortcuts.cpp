#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "Findings.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyPreferences.h"
#include "QuilloLinux/Desktop/XdgUserDefaults.h"
#include "QuilloLinux/Keyboard/HotKeyNames.h"
#include "QuilloLinux/Keyboard/X11HotKeyGrabs.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

/// The process of our own application, which has the shortcuts while it runs.
std::optional<std::string> runningApplication() {
  std::error_code unreadable;
  for (const auto& process : fs::directory_iterator("/proc", unreadable)) {
    const fs::path program = fs::read_symlink(process.path() / "exe", unreadable);
    if (!unreadable && program.filename() == "quillo-app") return process.path().filename().string();
  }
  return std::nullopt;
}

Finding examineShortcut(X11HotKeyGrabs& grabs, std::string_view action, const QuilloHotKey& hotKey) {
  const std::string subject = fmt::format("Shortcut to {}", action);
  const std::string name = fmt::format("{} ({})", hotKey.displayString(), pcKeyNames(hotKey));
  constexpr HotKeyReference reference = 1;
  const HotKeyStatus status = grabs.grab(hotKey, {}, reference);
  grabs.release(reference);
  switch (status) {
    case hotKeySucceeded: return {subject, name + " is free", ""};
    case hotKeyIsTaken:
      if (const auto process = runningApplication())
        return {subject, fmt::format("{} is in use, and Quillo runs as process {}", name, *process), ""};
      return {subject, name + " is used by another program",
              "Choose a different shortcut in Quillo's settings, or free it in that program."};
    case hotKeyIsMissing:
      return {subject, name + " is not on this keyboard", "Choose a different shortcut in Quillo's settings."};
    default:
      return {subject, fmt::format("{} was refused with the number {}", name, status),
              "Choose a different shortcut in Quillo's settings."};
  }
}

}  // namespace

std::vector<Finding> examineShortcuts() {
  PosixFileSystem fileSystem;
  RandomUUIDGenerator identifiers;
  const XdgUserDefaults settings(fileSystem, identifiers);
  std::vector<Finding> findings;
  if (const auto problem = settings.problem()) {
    findings.push_back({"Settings", *problem,
                        "Quillo goes on with its own settings. Mend or move the file; a damaged one is put aside when "
                        "a setting is changed."});
  }
  const auto grabs = X11HotKeyGrabs::open();
  if (!grabs) return findings;  // said already where the display server was examined
  const QuilloHotKeyConfiguration pair = QuilloHotKeyPreferences::load(settings);
  findings.push_back(examineShortcut(*grabs, "capture", pair.capture));
  findings.push_back(examineShortcut(*grabs, "paste", pair.paste));
  if (const char* wayland = std::getenv("WAYLAND_DISPLAY"); wayland != nullptr && *wayland != '\0') {
    findings.push_back({"Shortcuts under Wayland", "they reach Quillo only while an X11 program has the keyboard",
                        "In the desktop's own settings, bind keys to `quillo capture` and `quillo paste`."});
  }
  return findings;
}

}  // namespace quillo
