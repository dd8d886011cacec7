#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quillo {

/// How a payload is laid out in the clipboard's items.
enum class ClipboardComposition : std::uint8_t { imageThenText, textThenImage, singleItem, imageOnly, textOnly };

/// In the order of the enumeration.
constexpr std::array<std::string_view, 5> clipboardCompositionNames = {"image-then-text", "text-then-image",
                                                                       "single-item", "image-only", "text-only"};

constexpr std::string_view rawValue(ClipboardComposition composition) {
  return clipboardCompositionNames.at(static_cast<std::size_t>(composition));
}

/// Nothing for a name that is none.
constexpr std::optional<ClipboardComposition> clipboardComposition(std::string_view rawValue) {
  for (std::size_t i = 0; i < clipboardCompositionNames.size(); ++i) {
    if (clipboardCompositionNames[i] == rawValue) return static_cast<ClipboardComposition>(i);
  }
  return std::nullopt;
}

}  // namespace quillo
