#include "QuilloLinux/Keyboard/HotKeyNames.h"

#include <array>
#include <string_view>
#include <utility>

namespace quillo {
namespace {

constexpr std::array<std::pair<QuilloHotKeyModifiers, std::string_view>, 4> names = {{
    {QuilloHotKeyModifiers::control, "Control+"},
    {QuilloHotKeyModifiers::option, "Alt+"},
    {QuilloHotKeyModifiers::shift, "Shift+"},
    {QuilloHotKeyModifiers::command, "Super+"},
}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 11> symbolNames = {{
    {"↩", "Return"},
    {"⇥", "Tab"},
    {"←", "Left"},
    {"→", "Right"},
    {"↑", "Up"},
    {"↓", "Down"},
    {"↖", "Home"},
    {"↘", "End"},
    {"⇞", "Page Up"},
    {"⇟", "Page Down"},
    {"⌦", "Delete"},
}};

}  // namespace

std::string pcKeyNames(const QuilloHotKey& hotKey) {
  std::string text;
  for (const auto& [modifier, name] : names) {
    if (hotKey.modifiers.contains(modifier)) text += name;
  }
  for (const auto& [symbol, name] : symbolNames) {
    if (hotKey.keyLabel == symbol) return text.append(name);
  }
  return text + hotKey.keyLabel;
}

}  // namespace quillo
