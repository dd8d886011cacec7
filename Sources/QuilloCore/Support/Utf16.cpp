#include "QuilloCore/Support/Utf16.h"

#include <algorithm>

namespace quillo {
namespace {

constexpr std::int64_t checkpointDistance = 256;  // UTF-16 code units

std::uint8_t byteAt(std::string_view text, std::size_t position) {
  return static_cast<std::uint8_t>(text[position]);
}

/// Bytes of the code point that the given first byte begins.
std::size_t codePointLength(std::uint8_t first) {
  return first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

std::int64_t unitsOf(std::size_t codePointBytes) {
  return codePointBytes == 4 ? 2 : 1;
}

}  // namespace

std::int64_t utf16Length(std::string_view text) {
  std::int64_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    length += static_cast<std::int64_t>((byte & 0xC0U) != 0x80U) + static_cast<std::int64_t>(byte >= 0xF0U);
  }
  return length;
}

Utf16Index::Utf16Index(std::string_view text) : text_(text), length_(utf16Length(text)) {
  isAscii_ = std::ranges::all_of(text, [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
  if (isAscii_) return;
  checkpoints_.reserve(static_cast<std::size_t>(length_ / checkpointDistance) + 1);
  std::int64_t units = 0;
  std::int64_t nextCheckpoint = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t bytes = codePointLength(byteAt(text, position));
    if (units + unitsOf(bytes) > nextCheckpoint) {
      checkpoints_.push_back({units, position});
      nextCheckpoint += checkpointDistance;
    }
    units += unitsOf(bytes);
    position += bytes;
  }
}

std::size_t Utf16Index::byteOffset(std::int64_t utf16Offset) const {
  if (utf16Offset <= 0) return 0;
  if (utf16Offset >= length_) return text_.size();
  if (isAscii_) return static_cast<std::size_t>(utf16Offset);
  // The checkpoint of index k stands at the code point that holds unit k * checkpointDistance.
  auto [units, position] = checkpoints_[static_cast<std::size_t>(utf16Offset / checkpointDistance)];
  for (;;) {
    const std::size_t bytes = codePointLength(byteAt(text_, position));
    if (units + unitsOf(bytes) > utf16Offset) return position;
    units += unitsOf(bytes);
    position += bytes;
  }
}

std::int64_t Utf16Index::utf16Offset(std::size_t byteOffset) const {
  if (byteOffset >= text_.size()) return length_;
  if (isAscii_) return static_cast<std::int64_t>(byteOffset);
  const auto after = std::ranges::upper_bound(checkpoints_, byteOffset, {}, &Checkpoint::byteOffset);
  const Checkpoint& checkpoint = *(after - 1);
  return checkpoint.utf16Offset + utf16Length(text_.substr(checkpoint.byteOffset, byteOffset - checkpoint.byteOffset));
}

std::string_view Utf16Index::substring(std::int64_t begin, std::int64_t end) const {
  const std::size_t first = byteOffset(begin);
  return text_.substr(first, std::max(byteOffset(end), first) - first);
}

std::string_view utf16Prefix(std::string_view text, std::int64_t maximumUnits) {
  std::int64_t units = 0;
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t bytes = codePointLength(byteAt(text, position));
    units += unitsOf(bytes);
    if (units > maximumUnits) break;
    position += bytes;
  }
  return text.substr(0, position);
}

}  // namespace quillo
