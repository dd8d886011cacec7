#pragma once

#include <cstdint>
#include <optional>

namespace quillo {

/// Shortcuts name a physical key by the code of its place on the ANSI layout; the display names it by a code of the
/// kernel's. Neither depends on what the active layout types with the key. One table, read both ways.

/// Nothing for a code that no key of a PC has.
std::optional<std::uint8_t> x11KeyCode(std::uint32_t ansiKeyCode);

/// Nothing for modifiers, media keys and others that no shortcut can be made with. Qt calls the display's code of a
/// key event its native scan code.
std::optional<std::uint32_t> ansiKeyCode(std::uint32_t x11KeyCode);

}  // namespace quillo
