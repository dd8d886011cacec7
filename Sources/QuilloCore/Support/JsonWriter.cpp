#include "QuilloCore/Support/JsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>

#include "QuilloCore/Support/JsonError.h"

namespace quillo {

void JsonWriter::begin(char bracket) {
  separate();
  text_ += bracket;
  ++depth_;
  isFirst_ = true;
}

void JsonWriter::end(char bracket) {
  --depth_;
  if (!isFirst_) indent();
  text_ += bracket;
  isFirst_ = false;
}

void JsonWriter::separate() {
  if (followsKey_) {
    followsKey_ = false;
    return;
  }
  if (!isFirst_) text_ += ',';
  if (depth_ > 0) indent();
  isFirst_ = false;
}

void JsonWriter::indent() {
  if (style_ == JsonStyle::compact) return;
  text_ += '\n';
  text_.append(2 * depth_, ' ');
}

void JsonWriter::key(std::string_view name) {
  separate();
  quoted(name);
  text_ += style_ == JsonStyle::compact ? ":" : ": ";
  followsKey_ = true;
}

void JsonWriter::string(std::string_view text) {
  separate();
  quoted(text);
}

void JsonWriter::boolean(bool value) {
  separate();
  text_ += value ? "true" : "false";
}

void JsonWriter::verbatim(std::string_view json) {
  separate();
  text_ += json;
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  text_.append(digits.data(), end);
}

void JsonWriter::number(double value) {
  if (!std::isfinite(value)) throw JsonError(JsonError::NotFinite{});
  separate();
  if (value == 0 && std::signbit(value)) {
    text_ += "-0.0";  // "-0" would be read as an integer, which has no sign of zero
    return;
  }
  // Written out in full, a whole number beyond 64 bits would be read as an integer that does not fit.
  constexpr double wholeDigitsLimit = 1e18;
  std::array<char, 40> digits{};
  char* const first = digits.data();
  char* const last = first + digits.size();
  const auto result = std::abs(value) < wholeDigitsLimit
                          ? std::to_chars(first, last, value)
                          : std::to_chars(first, last, value, std::chars_format::scientific);
  text_.append(first, result.ptr);
}

void JsonWriter::quoted(std::string_view text) {
  static constexpr std::string_view hexDigits = "0123456789abcdef";
  text_ += '"';
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    text_.append(text, start, i - start);
    start = i + 1;
    text_ += '\\';
    switch (c) {
      case '"':
      case '\\': text_ += static_cast<char>(c); break;
      case '\n': text_ += 'n'; break;
      case '\r': text_ += 'r'; break;
      case '\t': text_ += 't'; break;
      case '\b': text_ += 'b'; break;
      case '\f': text_ += 'f'; break;
      default:
        text_ += "u00";
        text_ += hexDigits[c >> 4U];
        text_ += hexDigits[c & 0xFU];
    }
  }
  text_.append(text, start, text.size() - start);
  text_ += '"';
}

}  // namespace quillo
