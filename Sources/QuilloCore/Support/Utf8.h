#pragma once

#include <cstddef>
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
char32_t nextCodePoint(std::string_view text, std::size_t& position);

void appendCodePoint(std::string& text, char32_t codePoint);

std::size_t countCodePoints(std::string_view text);

}  // namespace quillo
