#pragma once

#include <optional>
#include <string>

namespace quillo {

/// One entry of the desktop's application menu.
struct DesktopEntry {
  std::string id;             ///< without its ending: "org.xfce.mousepad"
  std::string localizedName;  ///< one line

  friend bool operator==(const DesktopEntry&, const DesktopEntry&) = default;
};

/// The desktop's application entries.
namespace DesktopEntries {

/// The entry whose id or start-up class is the window class, without regard to letter case.
std::optional<DesktopEntry> findByWindowClass(const std::string& windowClass);

}  // namespace DesktopEntries
}  // namespace quillo
