#include "QuilloCore/Support/UUID.h"

#include <sys/random.h>

#include <cerrno>
#include <cstddef>
#include <system_error>

namespace quillo {
namespace {

constexpr std::size_t textLength = 36;

/// Whether a hyphen stands before the byte of that index.
constexpr bool isGroupStart(std::size_t byteIndex) {
  return byteIndex == 4 || byteIndex == 6 || byteIndex == 8 || byteIndex == 10;
}

std::optional<std::uint8_t> hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return static_cast<std::uint8_t>(c - '0');
  if (c >= 'A' && c <= 'F') return static_cast<std::uint8_t>(c - 'A' + 10);
  if (c >= 'a' && c <= 'f') return static_cast<std::uint8_t>(c - 'a' + 10);
  return std::nullopt;
}

}  // namespace

std::string UUID::text() const {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  result.reserve(textLength);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (isGroupStart(i)) result += '-';
    result += digits[bytes[i] >> 4U];
    result += digits[bytes[i] & 0xFU];
  }
  return result;
}

std::optional<UUID> UUID::parse(std::string_view text) {
  if (text.size() != textLength) return std::nullopt;
  UUID result;
  std::size_t position = 0;
  for (std::size_t i = 0; i < result.bytes.size(); ++i) {
    if (isGroupStart(i) && text[position++] != '-') return std::nullopt;
    const auto high = hexadecimalDigit(text[position++]);
    const auto low = hexadecimalDigit(text[position++]);
    if (!high || !low) return std::nullopt;
    result.bytes[i] = static_cast<std::uint8_t>(*high << 4U | *low);
  }
  return result;
}

UUID RandomUUIDGenerator::makeUUID() {
  UUID result;
  // So few bytes come whole or not at all.
  while (getrandom(result.bytes.data(), result.bytes.size(), 0) < 0) {
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  result.bytes[6] = static_cast<std::uint8_t>((result.bytes[6] & 0x0FU) | 0x40U);
  result.bytes[8] = static_cast<std::uint8_t>((result.bytes[8] & 0x3FU) | 0x80U);
  return result;
}

void JsonCodec<UUID>::write(JsonWriter& writer, const UUID& id) {
  writer.string(id.text());
}

UUID JsonCodec<UUID>::read(const JsonCursor& cursor) {
  const auto id = UUID::parse(cursor.string());
  if (!id) throw JsonError(JsonError::InvalidValue{cursor.path(), "it is not a UUID"});
  return *id;
}

}  // namespace quillo
