#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

struct ClipboardProgram {
  std::int32_t processIdentifier = 0;  ///< 0 when the display does not know it
  std::string name;
};

/// Who else takes what is put on the clipboard.
struct X11ClipboardManagers {
  std::optional<ClipboardProgram> takingOver;    ///< what a program leaves when it ends
  std::vector<ClipboardProgram> keepingHistory;  ///< everything that is copied
};

/// Programs that keep a history do not say so anywhere: those that are known are looked for among the user's processes.
/// Throws PasteboardError.
X11ClipboardManagers readX11ClipboardManagers();

/// Whether a program of that name (the system keeps 15 bytes of it) is known to keep a history.
bool keepsClipboardHistory(std::string_view processName);

}  // namespace quillo
