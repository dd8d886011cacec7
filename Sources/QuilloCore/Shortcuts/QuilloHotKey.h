#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/JsonReader.h"

namespace quillo {

struct KeyEvent;

/// A set of modifier keys.
struct QuilloHotKeyModifiers {
  static const QuilloHotKeyModifiers control;
  static const QuilloHotKeyModifiers option;
  static const QuilloHotKeyModifiers shift;
  static const QuilloHotKeyModifiers command;

  std::uint32_t rawValue = 0;

  constexpr bool contains(QuilloHotKeyModifiers other) const { return (rawValue & other.rawValue) == other.rawValue; }

  /// Whether it holds at least two of Control, Option and Command, so that no application's own shortcut is taken.
  constexpr bool suffices() const { return std::popcount(rawValue & (1U | 2U | 8U)) >= 2; }

  friend constexpr QuilloHotKeyModifiers operator|(QuilloHotKeyModifiers a, QuilloHotKeyModifiers b) {
    return {a.rawValue | b.rawValue};
  }
  constexpr QuilloHotKeyModifiers& operator|=(QuilloHotKeyModifiers other) { return *this = *this | other; }
  friend bool operator==(const QuilloHotKeyModifiers&, const QuilloHotKeyModifiers&) = default;
};

inline constexpr QuilloHotKeyModifiers QuilloHotKeyModifiers::control{1};
inline constexpr QuilloHotKeyModifiers QuilloHotKeyModifiers::option{2};
inline constexpr QuilloHotKeyModifiers QuilloHotKeyModifiers::shift{4};
inline constexpr QuilloHotKeyModifiers QuilloHotKeyModifiers::command{8};

/// A key and the modifier keys that are held with it.
struct QuilloHotKey {
  std::uint32_t keyCode = 0;  ///< names a physical key, by its place on the ANSI layout
  QuilloHotKeyModifiers modifiers;
  std::string keyLabel;  ///< what people call the key

  /// The symbols of the modifiers in the order Control, Option, Shift, Command, and the key's label.
  std::string displayString() const;

  /// Has a label and enough modifiers.
  bool isValid() const { return !keyLabel.empty() && modifiers.suffices(); }

  /// The shortcut that a key press in the shortcut recorder stands for; nothing when it has too few modifiers or the
  /// key has no label.
  static std::optional<QuilloHotKey> recorded(const KeyEvent& event);

  friend bool operator==(const QuilloHotKey&, const QuilloHotKey&) = default;
};

/// In JSON a bare number.
template <>
struct JsonCodec<QuilloHotKeyModifiers> {
  static void write(JsonWriter& writer, const QuilloHotKeyModifiers& modifiers) { writer.integer(modifiers.rawValue); }
  static QuilloHotKeyModifiers read(const JsonCursor& cursor) { return {readJson<std::uint32_t>(cursor)}; }
};

template <>
struct JsonFields<QuilloHotKey> {
  static constexpr auto table =
      std::tuple{jsonField("keyCode", &QuilloHotKey::keyCode), jsonField("modifiers", &QuilloHotKey::modifiers),
                 jsonField("keyLabel", &QuilloHotKey::keyLabel)};
};

}  // namespace quillo
