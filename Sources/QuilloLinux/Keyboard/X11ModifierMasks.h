#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"
#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// Which of the display's modifiers the keys of this keyboard stand for; 0 for a key that it does not have.
struct X11ModifierMasks {
  std::uint16_t alt = 0;
  std::uint16_t super = 0;
  std::uint16_t numLock = 0;
  std::uint16_t scrollLock = 0;

  /// Nothing when the keyboard lacks one of them.
  std::optional<std::uint16_t> maskOf(QuilloHotKeyModifiers modifiers) const;

  /// The lock keys' modifiers, Caps Lock among them, that may be on while a shortcut is typed.
  std::uint16_t locks() const;

  /// Every combination of the lock keys, none among them.
  std::vector<std::uint16_t> lockCombinations() const;

  friend bool operator==(const X11ModifierMasks&, const X11ModifierMasks&) = default;
};

/// Two round trips; nothing when the display does not answer.
std::optional<X11ModifierMasks> readModifierMasks(const X11Connection& connection);

}  // namespace quillo
