#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// The keyboard's state: the modifiers by what holds them, and which layout is active.
struct X11KeyboardState {
  std::uint8_t base = 0;     ///< held by keys that are down
  std::uint8_t latched = 0;  ///< held until the next key
  std::uint8_t locked = 0;
  std::uint8_t group = 0;  ///< the active layout, from 0
};

/// A connection to the display on which the keyboard can be asked; null when there is no display or no such keyboard.
std::unique_ptr<X11Connection> connectToKeyboard();

/// One round trip; nothing when the display does not answer.
std::optional<X11KeyboardState> readKeyboardState(const X11Connection& connection);

/// The modifiers that count as held: all but Caps Lock and Num Lock.
inline constexpr std::uint8_t nonLockingModifiers = 0xED;

}  // namespace quillo
