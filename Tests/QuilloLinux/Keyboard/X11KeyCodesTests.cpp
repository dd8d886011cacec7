#include "QuilloLinux/Keyboard/X11KeyCodes.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "QuilloCore/Shortcuts/KeyLabels.h"
#include "QuilloLinux/Keyboard/X11KeyEvent.h"

namespace quillo::test {
namespace {

TEST(X11KeyCodes, everyLabelledKeyIsOnTheKeyboardOnce) {
  std::set<std::uint8_t> codes;
  int count = 0;
  for (std::uint32_t ansi = 0; ansi < 300; ++ansi) {
    const auto code = x11KeyCode(ansi);
    EXPECT_TRUE(code.has_value() || keyLabel(ansi).empty()) << ansi;
    if (!code) continue;
    ++count;
    codes.insert(*code);
    EXPECT_EQ(ansiKeyCode(*code), ansi);
  }
  EXPECT_EQ(static_cast<int>(codes.size()), count);
  for (std::uint32_t code = 0; code < 300; ++code) {
    if (const auto ansi = ansiKeyCode(code)) EXPECT_EQ(x11KeyCode(*ansi), code);
  }
  EXPECT_EQ(ansiKeyCode(0xFFFFFFFF), std::nullopt);
}

TEST(X11KeyEvent, isAKeyAndWhatItTypes) {
  constexpr auto held = QuilloHotKeyModifiers::control | QuilloHotKeyModifiers::option;
  struct Case {
    const char* what;
    std::uint32_t keyCode;
    std::uint32_t symbol;
    std::optional<std::string> display;  ///< of the recorded shortcut
  };
  const std::vector<Case> cases = {
      {"A", 38, 0x61, "⌃⌥A"},
      {"the key of A, which types a Cyrillic letter", 38, 0x6C6, "⌃⌥A"},
      {"semicolon", 47, 0x3B, "⌃⌥;"},
      {"the key of the semicolon on a German layout", 47, 0xF6, "⌃⌥Ö"},
      {"the same on a Russian one", 47, 0x6D6, "⌃⌥Ж"},
      {"a letter beyond the old symbols", 47, 0x100010D, "⌃⌥Č"},
      {"a digit of the keypad", 87, 0xFFB1, "⌃⌥1"},
      {"left", 113, 0xFF51, "⌃⌥←"},
      {"F12", 96, 0xFFC9, "⌃⌥F12"},
      {"Delete", 119, 0xFFFF, "⌃⌥⌦"},
      {"Escape types nothing to show", 9, 0xFF1B, std::nullopt},
      {"Backspace neither", 22, 0xFF08, std::nullopt},
      {"a dead key neither", 34, 0xFE51, std::nullopt},
      {"Control alone", 37, 0xFFE3, std::nullopt},
      {"a media key", 172, 0x1008FF14, std::nullopt},
  };
  for (const Case& each : cases) {
    const auto event = keyEvent(each.keyCode, each.symbol, held);
    const auto recorded = event ? QuilloHotKey::recorded(*event) : std::nullopt;
    EXPECT_EQ(recorded ? std::optional(recorded->displayString()) : std::nullopt, each.display) << each.what;
  }
}

}  // namespace
}  // namespace quillo::test
