#pragma once

#include <cstdint>
#include <string>

namespace quillo {

/// Which keys paste in a destination.
enum class PasteKeystroke : std::uint8_t {
  controlV,
  controlShiftV,  ///< in terminals, where Control+V is a character of its own
};

/// The destination as it was when the paste was asked for: its process, and what had the focus in it.
struct FrozenPasteTarget {
  /// What identifies the focused element while its application lives.
  struct Identity {
    std::uint32_t inputFocus = 0;  ///< the display's window that gets the keys
    std::string element;           ///< the focused accessible element; empty where the application names none

    friend bool operator==(const Identity&, const Identity&) = default;
  };

  std::int32_t processIdentifier = 0;
  Identity identity;
  PasteKeystroke keystroke = PasteKeystroke::controlV;

  friend bool operator==(const FrozenPasteTarget&, const FrozenPasteTarget&) = default;
};

/// Why a destination could not be frozen.
enum class PasteTargetFreezeError : std::uint8_t {
  accessibilityPermissionRequired,
  destinationUnavailable,  ///< nothing has the focus, or what has it does not answer
  destinationChanged,      ///< another process has the focus
};

}  // namespace quillo
