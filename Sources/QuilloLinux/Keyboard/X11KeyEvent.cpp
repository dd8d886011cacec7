#include "QuilloLinux/Keyboard/X11KeyEvent.h"

#include <xkbcommon/xkbcommon.h>

#include <array>
#include <string>

#include "QuilloLinux/Keyboard/X11KeyCodes.h"

namespace quillo {
namespace {

/// Empty for symbols that are no characters, and for control characters.
std::string characters(std::uint32_t keySymbol) {
  const std::uint32_t codePoint = xkb_keysym_to_utf32(keySymbol);
  const bool isControl = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
  std::array<char, 8> text{};
  if (isControl || xkb_keysym_to_utf8(keySymbol, text.data(), text.size()) <= 0) return {};
  return text.data();
}

}  // namespace

std::optional<KeyEvent> keyEvent(std::uint32_t x11KeyCode, std::uint32_t keySymbol, QuilloHotKeyModifiers modifiers) {
  const auto code = ansiKeyCode(x11KeyCode);
  if (!code) return std::nullopt;
  return KeyEvent{*code, modifiers, characters(keySymbol)};
}

}  // namespace quillo
