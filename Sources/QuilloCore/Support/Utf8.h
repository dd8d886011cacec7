#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// Text inside the core is always well-formed UTF-8; it is checked where it enters, with these functions.

/// Byte offset of the first malformed sequence; nothing when the text is well-formed.
std::optional<std::size_t> findInvalidUtf8(std::string_view text);

/// The text with each maximal malformed sequence replaced by U+FFFD. Well-formed text is returned unchanged.
std::string replacingInvalidUtf8(std::string_view text);

/// The code point that begins at `position`, which is moved behind it. The text must be well-formed.
inline char32_t nextCodePoint(std::string_view text, std::size_t& position) {
  const auto byte = [&] { return static_cast<std::uint8_t>(text[position++]); };
  const char32_t first = byte();
  if (first < 0x80) return first;
  const char32_t second = byte() & 0x3FU;
  if (first < 0xE0) return (first & 0x1FU) << 6U | second;
  const char32_t third = byte() & 0x3FU;
  if (first < 0xF0) return (first & 0x0FU) << 12U | second << 6U | third;
  return (first & 0x07U) << 18U | second << 12U | third << 6U | (byte() & 0x3FU);
}

void appendCodePoint(std::string& text, char32_t codePoint);

/// Number of bytes before the first that is no ASCII.
std::size_t asciiPrefixLength(std::string_view text);

std::size_t countCodePoints(std::string_view text);

}  // namespace quillo
