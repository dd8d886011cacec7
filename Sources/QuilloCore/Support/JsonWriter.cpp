#include "QuilloCore/Support/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "QuilloCore/Support/JsonError.h"

namespace quillo {
namespace {

constexpr std::uint64_t ofEachByte(std::uint64_t byte) {
  return byte * 0x0101010101010101U;
}

/// Whether none of eight bytes must be escaped. Subtracting from each byte borrows across bytes, but only behind one
/// that is to be escaped.
bool areEightPlain(const char* bytes) {
  std::uint64_t block = 0;
  std::memcpy(&block, bytes, sizeof(block));
  const auto holdsZero = [](std::uint64_t value) { return (value - ofEachByte(1)) & ~value; };
  const std::uint64_t control = (block - ofEachByte(0x20)) & ~block;
  const std::uint64_t quote = holdsZero(block ^ ofEachByte('"'));
  const std::uint64_t backslash = holdsZero(block ^ ofEachByte('\\'));
  return ((control | quote | backslash) & ofEachByte(0x80)) == 0;
}

bool isPlain(char c) {
  return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\';
}

/// Copies bytes from the beginning that stand for themselves, and says how many: all, if there is no other. What is
/// behind them up to the text's length may have been written too.
std::size_t copyPlain(char* out, std::string_view text) {
  constexpr std::size_t blockSize = 8;
  std::size_t length = 0;
  const auto copyBlock = [&](std::size_t start) {
    std::memcpy(out + start, text.data() + start, blockSize);
    return areEightPlain(text.data() + start);
  };
  while (length + blockSize <= text.size()) {
    if (!copyBlock(length)) return length;
    length += blockSize;
  }
  // The last block may overlap the one before.
  if (text.size() >= blockSize && copyBlock(text.size() - blockSize)) return text.size();
  for (; length < text.size() && isPlain(text[length]); ++length) out[length] = text[length];
  return length;
}

/// How many bytes at the beginning stand for themselves.
std::size_t plainLength(std::string_view text) {
  std::size_t length = 0;
  while (length + 8 <= text.size() && areEightPlain(text.data() + length)) length += 8;
  while (length < text.size() && isPlain(text[length])) ++length;
  return length;
}

}  // namespace

std::string JsonWriter::takeText() {
  text_.resize(size_);
  size_ = 0;
  return std::move(text_);
}

void JsonWriter::grow(std::size_t count) {
  constexpr std::size_t smallestSize = 4096;
  const std::size_t size = std::max({size_ + count, 2 * text_.size(), smallestSize});
  text_.resize_and_overwrite(size, [](char* /*bytes*/, std::size_t newSize) { return newSize; });
}

void JsonWriter::append(std::string_view text) {
  if (text.empty()) return;
  std::memcpy(room(text.size()), text.data(), text.size());
  size_ += text.size();
}

void JsonWriter::beginLine() {
  const std::size_t length = 1 + 2 * depth_;
  char* const line = room(length);
  *line = '\n';
  std::memset(line + 1, ' ', length - 1);
  size_ += length;
}

void JsonWriter::key(std::string_view name) {
  separate();
  quoted(name);
  append(style_ == JsonStyle::compact ? ":" : ": ");
  followsKey_ = true;
}

void JsonWriter::string(std::string_view text) {
  separate();
  quoted(text);
}

void JsonWriter::boolean(bool value) {
  separate();
  append(value ? "true" : "false");
}

void JsonWriter::verbatim(std::string_view json) {
  separate();
  append(json);
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  constexpr std::size_t longestInteger = 20;
  char* const first = room(longestInteger);
  size_ += static_cast<std::size_t>(std::to_chars(first, first + longestInteger, value).ptr - first);
}

void JsonWriter::number(double value) {
  if (!std::isfinite(value)) throw JsonError(JsonError::NotFinite{});
  if (value == 0 && std::signbit(value)) {
    separate();
    append("-0.0");  // "-0" would be read as an integer, which has no sign of zero
    return;
  }
  // Whole numbers have all their digits, as long as a double tells them from their neighbours.
  constexpr double wholeDigitsLimit = 9007199254740992;
  if (std::abs(value) <= wholeDigitsLimit && std::trunc(value) == value) {
    integer(static_cast<std::int64_t>(value));
    return;
  }
  separate();
  // Larger ones could be read as an integer that does not fit into 64 bits.
  constexpr std::size_t longestNumber = 40;
  char* const first = room(longestNumber);
  const auto result = std::abs(value) < wholeDigitsLimit
                          ? std::to_chars(first, first + longestNumber, value)
                          : std::to_chars(first, first + longestNumber, value, std::chars_format::scientific);
  size_ += static_cast<std::size_t>(result.ptr - first);
}

void JsonWriter::quoted(std::string_view text) {
  // Most texts are plain and short; they are copied while they are looked at.
  char* const out = room(text.size() + 2);
  *out = '"';
  const std::size_t copied = copyPlain(out + 1, text);
  size_ += 1 + copied;
  if (copied == text.size()) return append('"');
  text.remove_prefix(copied);
  for (;;) {
    const std::size_t length = plainLength(text);
    append(text.substr(0, length));
    if (length == text.size()) break;
    escaped(static_cast<unsigned char>(text[length]));
    text.remove_prefix(length + 1);
  }
  append('"');
}

void JsonWriter::escaped(unsigned char c) {
  static constexpr std::string_view hexDigits = "0123456789abcdef";
  append('\\');
  switch (c) {
    case '"':
    case '\\': append(static_cast<char>(c)); break;
    case '\n': append('n'); break;
    case '\r': append('r'); break;
    case '\t': append('t'); break;
    case '\b': append('b'); break;
    case '\f': append('f'); break;
    default:
      append("u00");
      append(hexDigits[c >> 4U]);
      append(hexDigits[c & 0xFU]);
  }
}

}  // namespace quillo
