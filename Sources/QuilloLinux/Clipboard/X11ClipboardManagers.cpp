#include "QuilloLinux/Clipboard/X11ClipboardManagers.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "QuilloLinux/Clipboard/X11SelectionDisplay.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;

std::string processName(const fs::path& process) {
  std::string name;
  std::ifstream file(process / "comm");
  std::getline(file, name);
  return name;
}

std::vector<ClipboardProgram> findHistories() {
  std::vector<ClipboardProgram> found;
  std::error_code unreadable;
  for (const fs::directory_entry& process : fs::directory_iterator("/proc", unreadable)) {
    const std::string number = process.path().filename().string();
    ClipboardProgram program;
    const char* end = number.data() + number.size();
    if (std::from_chars(number.data(), end, program.processIdentifier).ptr != end) continue;
    struct stat status{};
    if (::stat(process.path().c_str(), &status) != 0 || status.st_uid != ::getuid()) continue;
    program.name = processName(process.path());
    if (keepsClipboardHistory(program.name)) found.push_back(program);
  }
  std::ranges::sort(found, {}, &ClipboardProgram::processIdentifier);
  return found;
}

}  // namespace

bool keepsClipboardHistory(std::string_view processName) {
  // Some are part of a panel or a shell, which is named here instead.
  constexpr std::array<std::string_view, 13> names = {
      "clipcatd",  "clipit",  "clipman",    "clipmenud",   "copyq",   "diodon",       "gpaste-daemon",
      "greenclip", "klipper", "parcellite", "plasmashell", "qlipper", "xfce4-clipman"};
  return std::ranges::find(names, processName) != names.end();
}

X11ClipboardManagers readX11ClipboardManagers() {
  X11ClipboardManagers managers;
  const X11SelectionDisplay display;
  if (const std::uint32_t window = display.ownerOf(display.clipboardManager())) {
    const std::int32_t process = X11ProcessRequest(display.connection(), window).processIdentifier().value_or(0);
    managers.takingOver = {.processIdentifier = process, .name = processName("/proc/" + std::to_string(process))};
  }
  managers.keepingHistory = findHistories();
  return managers;
}

}  // namespace quillo
