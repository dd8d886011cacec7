#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"

#include "QuilloCore/Shortcuts/KeyLabels.h"

namespace quillo {

QuilloHotKeyConfiguration QuilloHotKeyConfiguration::defaults() {
  constexpr std::uint32_t keyC = 8;
  constexpr std::uint32_t keyV = 9;
  constexpr auto modifiers =
      QuilloHotKeyModifiers::control | QuilloHotKeyModifiers::option | QuilloHotKeyModifiers::command;
  return {{keyC, modifiers, std::string(keyLabel(keyC))}, {keyV, modifiers, std::string(keyLabel(keyV))}};
}

std::optional<std::string_view> QuilloHotKeyConfiguration::validationMessage() const {
  if (!capture.isValid() || !paste.isValid()) return "Include at least two of Control, Option, and Command with a key.";
  if (capture == paste) return "Capture and paste need different shortcuts.";
  return std::nullopt;
}

}  // namespace quillo
