#pragma once

#include <optional>
#include <string_view>
#include <tuple>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

/// The two global shortcuts.
struct QuilloHotKeyConfiguration {
  QuilloHotKey capture;
  QuilloHotKey paste;

  /// Control, Option and Command with C, and with V.
  static QuilloHotKeyConfiguration defaults();

  /// Why the pair cannot be used, in words for the user; nothing when it is valid.
  std::optional<std::string_view> validationMessage() const;

  friend bool operator==(const QuilloHotKeyConfiguration&, const QuilloHotKeyConfiguration&) = default;
};

template <>
struct JsonFields<QuilloHotKeyConfiguration> {
  static constexpr auto table = std::tuple{jsonField("capture", &QuilloHotKeyConfiguration::capture),
                                           jsonField("paste", &QuilloHotKeyConfiguration::paste)};
};

/// What the shortcut recorder tells the user to do, and what it says when a key press was no shortcut.
inline constexpr std::string_view hotKeyRecordingGuidance = "Click a shortcut, then type the combination you want.";
inline constexpr std::string_view hotKeyRecordingRefusal = "Hold Control, Option, or Command and press another key.";

}  // namespace quillo
