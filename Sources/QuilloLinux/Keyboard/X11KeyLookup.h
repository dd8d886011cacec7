#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "QuilloLinux/X11/X11Connection.h"

namespace quillo {

/// Which keys of the display's keyboard write what, as it is now: read anew for each use, because users switch layouts.
class X11KeyLookup {
 public:
  /// Nothing when the display does not answer. `group` is the active layout.
  static std::optional<X11KeyLookup> read(const X11Connection& connection, std::uint8_t group);

  /// The key that writes the symbol without any modifier: in the active layout, else in another one (programs look
  /// there for their shortcuts when the active layout has no Latin letters).
  std::optional<std::uint8_t> keyFor(std::uint32_t symbol) const;

  /// A key that acts as the modifier; of several, one that writes the symbol.
  std::optional<std::uint8_t> modifierKey(std::size_t modifier, std::uint32_t preferredSymbol) const;

 private:
  struct Key {
    std::uint8_t code = 0;
    std::vector<std::uint32_t> symbols;  ///< the first level of each layout
  };

  X11KeyLookup() = default;
  const Key* find(std::uint8_t code) const;

  std::uint8_t group_ = 0;
  std::vector<Key> keys_;
  std::vector<std::vector<std::uint8_t>> modifierKeys_;  ///< by modifier: Shift, Lock, Control, …
};

}  // namespace quillo
