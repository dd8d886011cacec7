#include "QuilloCore/Shortcuts/QuilloHotKey.h"

#include <array>
#include <string_view>
#include <utility>

#include "QuilloCore/Shortcuts/KeyEvent.h"
#include "QuilloCore/Shortcuts/KeyLabels.h"
#include "QuilloCore/Support/GraphemeClusters.h"
#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr std::array<std::pair<QuilloHotKeyModifiers, std::string_view>, 4> symbols = {{
    {QuilloHotKeyModifiers::control, "⌃"},
    {QuilloHotKeyModifiers::option, "⌥"},
    {QuilloHotKeyModifiers::shift, "⇧"},
    {QuilloHotKeyModifiers::command, "⌘"},
}};

std::string labelOf(const KeyEvent& event) {
  if (const std::string_view known = keyLabel(event.keyCode); !known.empty()) return std::string(known);
  std::string typed = uppercased(trimmingWhiteSpace(event.charactersIgnoringModifiers));
  return countGraphemeClusters(typed) == 1 ? typed : std::string();
}

}  // namespace

std::string QuilloHotKey::displayString() const {
  std::string text;
  for (const auto& [modifier, symbol] : symbols) {
    if (modifiers.contains(modifier)) text += symbol;
  }
  return text + keyLabel;
}

std::optional<QuilloHotKey> QuilloHotKey::recorded(const KeyEvent& event) {
  const QuilloHotKey hotKey{event.keyCode, event.modifiers, labelOf(event)};
  return hotKey.isValid() ? std::optional(hotKey) : std::nullopt;
}

}  // namespace quillo
