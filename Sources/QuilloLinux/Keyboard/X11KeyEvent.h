#pragma once

#include <cstdint>
#include <optional>

#include "QuilloCore/Shortcuts/KeyEvent.h"

namespace quillo {

/// A key press in the shortcut recorder's terms, from what a toolkit tells of the display's event: the key's code (Qt's
/// native scan code), the symbol that it types (Qt's native virtual key) and the modifiers that are held. Nothing for
/// keys that no shortcut can be made with.
std::optional<KeyEvent> keyEvent(std::uint32_t x11KeyCode, std::uint32_t keySymbol, QuilloHotKeyModifiers modifiers);

}  // namespace quillo
