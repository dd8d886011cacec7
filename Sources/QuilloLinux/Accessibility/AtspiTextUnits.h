#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// In what an application counts its text.
enum class AtspiTextUnit : std::uint8_t {
  codePoint,
  utf16,  ///< also the form with a filler behind each astral character, once the fillers are gone
};

/// A text as the application gave it, brought to the core's form.
struct AtspiText {
  std::string text;                               ///< UTF-8, without fillers
  AtspiTextUnit unit = AtspiTextUnit::codePoint;  ///< of the application's offsets
  std::int64_t utf16Length = 0;

  friend bool operator==(const AtspiText&, const AtspiText&) = default;
};

/// `characterCount` is what the application says of the whole text that it gave.
AtspiText interpretText(std::string raw, std::int64_t characterCount);

/// The UTF-16 range of the application's offsets [start, end); offsets beyond the text are clamped.
ArtifactTextRange utf16Range(const AtspiText& text, std::int64_t start, std::int64_t end);

}  // namespace quillo
