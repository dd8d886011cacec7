#pragma once

#include <memory>
#include <string_view>

#include "QuilloCore/Paste/InputFocusProviding.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// What the display sends keys to. The process is that of the active window, which need not be the one that owns the
/// focused window inside it. Connects when it is first asked, and anew when the display has gone away.
class X11InputFocus final : public InputFocusProviding {
 public:
  std::optional<InputFocus> inputFocus() override;

 private:
  std::unique_ptr<X11Connection> connection_;
};

/// Whether a window with this WM_CLASS (two names, each ended by a zero byte) is a terminal's.
bool isTerminalClass(std::string_view windowClass);

}  // namespace quillo
