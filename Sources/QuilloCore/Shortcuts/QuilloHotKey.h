#pragma once

#include <cstdint>
#include <string>

namespace quillo {

/// A set of modifier keys, one bit each.
struct QuilloHotKeyModifiers {
  static constexpr std::uint32_t control = 1;
  static constexpr std::uint32_t option = 2;
  static constexpr std::uint32_t shift = 4;
  static constexpr std::uint32_t command = 8;

  std::uint32_t rawValue = 0;

  constexpr bool contains(std::uint32_t bits) const { return (rawValue & bits) == bits; }

  friend bool operator==(const QuilloHotKeyModifiers&, const QuilloHotKeyModifiers&) = default;
};

/// A key with the modifiers that have to be held.
struct QuilloHotKey {
  std::uint32_t keyCode = 0;  ///< names a physical key of the ANSI layout
  QuilloHotKeyModifiers modifiers;
  std::string keyLabel;  ///< the key's name for people

  /// The symbols of the modifiers (Control, Option, Shift, Command) and then the label.
  std::string displayString() const;

  friend bool operator==(const QuilloHotKey&, const QuilloHotKey&) = default;
};

/// The two global shortcuts.
struct QuilloHotKeyConfiguration {
  QuilloHotKey capture;
  QuilloHotKey paste;

  friend bool operator==(const QuilloHotKeyConfiguration&, const QuilloHotKeyConfiguration&) = default;
};

}  // namespace quillo
