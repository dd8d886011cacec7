#include <cstdlib>

#include "Findings.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"

namespace quillo {

std::vector<Finding> examineKeystrokes() {
  const char* display = std::getenv("DISPLAY");
  if (display == nullptr || *display == '\0') return {};  // said already where the display server was examined
  if (!X11PasteKeystroke().isAllowed()) {
    return {{"Keystroke delivery", "the display lets no program press keys",
             "Use a display server that offers the XTEST and XKEYBOARD extensions."}};
  }
  const char* wayland = std::getenv("WAYLAND_DISPLAY");
  if (wayland != nullptr && *wayland != '\0') {
    return {{"Keystroke delivery", "keys reach X11 programs only",
             "Paste into programs that run under XWayland, or use `quillo copy` and paste yourself."}};
  }
  return {{"Keystroke delivery", "the paste keys can be pressed", ""}};
}

}  // namespace quillo
