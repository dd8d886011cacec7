#pragma once

#include <cstdint>

#include "QuilloCore/Paste/FrozenPasteTarget.h"

namespace quillo {

enum class PasteKeystrokeOutcome : std::uint8_t {
  sent,
  focusMoved,  ///< the keys would have gone to another window
  keysHeld,    ///< a finger is on a key: a modifier makes it another command, and a shortcut may keep the keyboard
  failed,      ///< the keyboard lacks the keys, or there is none
};

/// Presses keys for the user. Used by one thread.
class PasteKeystrokeSending {
 public:
  virtual ~PasteKeystrokeSending() = default;

  virtual bool isAllowed() = 0;

  /// Presses and releases the keys, or presses none: only when that window has the display's focus at that very moment.
  virtual PasteKeystrokeOutcome send(PasteKeystroke keystroke, std::uint32_t inputFocus) = 0;
};

}  // namespace quillo
