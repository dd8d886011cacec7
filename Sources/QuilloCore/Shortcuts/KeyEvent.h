#pragma once

#include <cstdint>
#include <string>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

/// A key that was pressed, as the interface's toolkit tells of it.
struct KeyEvent {
  std::uint32_t keyCode = 0;        ///< as in QuilloHotKey
  QuilloHotKeyModifiers modifiers;  ///< held with it
  /// What the key types in the active layout without the modifiers; UTF-8, often one character, perhaps nothing.
  std::string charactersIgnoringModifiers;

  friend bool operator==(const KeyEvent&, const KeyEvent&) = default;
};

}  // namespace quillo
