#include "QuilloCore/Support/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace quillo {
namespace {

std::uint8_t byteAt(std::string_view text, std::size_t position) {
  return static_cast<std::uint8_t>(text[position]);
}

bool isContinuation(std::uint8_t byte) {
  return (byte & 0xC0U) == 0x80U;
}

/// One code point's bytes, or the longest beginning of one that something else follows.
struct Sequence {
  std::size_t length;
  bool isWellFormed;
};

/// The table of well-formed byte sequences of the Unicode Standard: only the second byte's range depends on the first.
Sequence sequenceAt(std::string_view text, std::size_t position) {
  const std::uint8_t first = byteAt(text, position);
  if (first < 0x80) return {1, true};
  std::size_t length = 0;
  std::uint8_t lowest = 0x80;
  std::uint8_t highest = 0xBF;
  if (first >= 0xC2 && first <= 0xDF) {
    length = 2;
  } else if (first >= 0xE0 && first <= 0xEF) {
    length = 3;
    if (first == 0xE0) lowest = 0xA0;
    if (first == 0xED) highest = 0x9F;
  } else if (first >= 0xF0 && first <= 0xF4) {
    length = 4;
    if (first == 0xF0) lowest = 0x90;
    if (first == 0xF4) highest = 0x8F;
  } else {
    return {1, false};
  }
  for (std::size_t i = 1; i < length; ++i) {
    if (position + i == text.size()) return {i, false};
    const std::uint8_t next = byteAt(text, position + i);
    if (next < lowest || next > highest) return {i, false};
    lowest = 0x80;
    highest = 0xBF;
  }
  return {length, true};
}

}  // namespace

std::size_t asciiPrefixLength(std::string_view text) {
  std::size_t position = 0;
  for (std::uint64_t eight = 0; position + sizeof(eight) <= text.size(); position += sizeof(eight)) {
    std::memcpy(&eight, text.data() + position, sizeof(eight));
    if ((eight & 0x8080808080808080U) != 0) break;
  }
  while (position < text.size() && byteAt(text, position) < 0x80) ++position;
  return position;
}

std::optional<std::size_t> findInvalidUtf8(std::string_view text) {
  std::size_t position = asciiPrefixLength(text);
  while (position < text.size()) {
    const Sequence sequence = sequenceAt(text, position);
    if (!sequence.isWellFormed) return position;
    position += sequence.length;
    if (position < text.size() && byteAt(text, position) < 0x80) position += asciiPrefixLength(text.substr(position));
  }
  return std::nullopt;
}

std::string replacingInvalidUtf8(std::string_view text) {
  std::string result;
  while (const auto invalid = findInvalidUtf8(text)) {
    result.append(text, 0, *invalid);
    result += "\uFFFD";
    text.remove_prefix(*invalid + sequenceAt(text, *invalid).length);
  }
  result.append(text);
  return result;
}

void appendCodePoint(std::string& text, char32_t codePoint) {
  const auto append = [&](char32_t byte) { text += static_cast<char>(static_cast<std::uint8_t>(byte)); };
  if (codePoint < 0x80) {
    append(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    append(0xC0U | codePoint >> 6U);
  } else {
    if (codePoint < 0x10000) {
      append(0xE0U | codePoint >> 12U);
    } else {
      append(0xF0U | codePoint >> 18U);
      append(0x80U | (codePoint >> 12U & 0x3FU));
    }
    append(0x80U | (codePoint >> 6U & 0x3FU));
  }
  append(0x80U | (codePoint & 0x3FU));
}

std::size_t countCodePoints(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return !isContinuation(static_cast<std::uint8_t>(c)); }));
}

}  // namespace quillo
