#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

std::string QuilloHotKey::displayString() const {
  std::string text;
  if (modifiers.contains(QuilloHotKeyModifiers::control)) text += "⌃";
  if (modifiers.contains(QuilloHotKeyModifiers::option)) text += "⌥";
  if (modifiers.contains(QuilloHotKeyModifiers::shift)) text += "⇧";
  if (modifiers.contains(QuilloHotKeyModifiers::command)) text += "⌘";
  return text + keyLabel;
}

}  // namespace quillo
