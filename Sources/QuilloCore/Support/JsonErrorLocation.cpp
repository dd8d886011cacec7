#include "QuilloCore/Support/JsonErrorLocation.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// Where the text stops being JSON.
struct Fault {
  std::size_t offset;
  std::string_view reason;
  bool isTooDeep = false;
};

/// Reads the text by the grammar, without recursion, until the first fault. Each reading function returns whether it
/// succeeded, and leaves the position at the byte to blame when it did not.
class JsonScanner {
 public:
  JsonScanner(std::string_view text, std::size_t maximumDepth) : text_(text), maximumDepth_(maximumDepth) {}

  std::optional<Fault> scan() {
    if (readDocument()) return std::nullopt;
    return Fault{position_, reason_, isTooDeep_};
  }

 private:
  bool isAtEnd() const { return position_ == text_.size(); }
  char peek() const { return isAtEnd() ? '\0' : text_[position_]; }

  bool fail(std::string_view reason) {
    reason_ = isAtEnd() ? "the text ends too early" : reason;
    return false;
  }

  bool skip(char c) {
    if (isAtEnd() || text_[position_] != c) return false;
    ++position_;
    return true;
  }

  void skipBlanks() { position_ = std::min(text_.find_first_not_of(" \t\n\r", position_), text_.size()); }

  bool readDocument() {
    do {
      skipBlanks();
      if (!readValue()) return false;
      skipBlanks();
      while (!open_.empty() && skip(open_.back())) {
        open_.pop_back();
        skipBlanks();
      }
      if (open_.empty()) return isAtEnd() || fail("something follows the value");
      if (!skip(',')) return fail("a comma or a closing bracket is missing");
      skipBlanks();
    } while (open_.back() == ']' || readKey());
    return false;
  }

  /// A scalar, an empty array or object, or the opening of one with its first key.
  bool readValue() {
    for (;;) {
      const char c = peek();
      if (c == '"') return readString();
      if (c == '-' || isDigit(c)) return readNumber();
      if (c != '[' && c != '{') return readWord();
      const std::size_t opening = position_++;
      const char closing = c == '[' ? ']' : '}';
      skipBlanks();
      if (skip(closing)) return true;
      if (open_.size() == maximumDepth_) {
        position_ = opening;
        isTooDeep_ = true;
        return fail("it is nested too deeply");
      }
      open_ += closing;
      if (closing == '}' && !readKey()) return false;
      skipBlanks();
    }
  }

  bool readKey() {
    if (peek() != '"') return fail("a member's key is missing");
    if (!readString()) return false;
    skipBlanks();
    return skip(':') || fail("a colon is missing behind the key");
  }

  bool readWord() {
    for (const std::string_view word : {"true", "false", "null"}) {
      if (!text_.substr(position_).starts_with(word)) continue;
      const std::size_t begin = position_;
      position_ += word.size();
      if (isAtEnd() || std::string_view(" \t\n\r,:[]{}").contains(peek())) return true;
      position_ = begin;
    }
    return fail("a value is missing");
  }

  static bool isDigit(char c) { return c >= '0' && c <= '9'; }

  bool readDigits() {
    if (!isDigit(peek())) return fail("a digit is missing");
    while (isDigit(peek())) ++position_;
    return true;
  }

  bool readNumber() {
    const std::size_t begin = position_;
    skip('-');
    if (skip('0')) {
      if (isDigit(peek())) return fail("a number begins with a needless zero");
    } else if (!readDigits()) {
      return false;
    }
    if (skip('.') && !readDigits()) return false;
    if (skip('e') || skip('E')) {
      if (!skip('-')) skip('+');
      if (!readDigits()) return false;
    }
    if (!isAtEnd() && !std::string_view(" \t\n\r,:[]{}").contains(peek())) return fail("a number goes on wrongly");
    const std::string_view number = text_.substr(begin, position_ - begin);
    if (isFinite(number)) return true;
    position_ = begin;
    return fail("a number is too large");
  }

  static bool isFinite(std::string_view number) {
    double value = 0;
    if (std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc{}) return true;
    // Out of range, but a number too small is read as zero: what counts is the decimal place of its first digit.
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const std::size_t first = mantissa.find_first_of("123456789");
    if (first == std::string_view::npos) return true;
    std::string_view exponentText = number.substr(std::min(mantissaEnd + 1, number.size()));
    const bool isNegative = exponentText.starts_with('-');
    if (isNegative || exponentText.starts_with('+')) exponentText.remove_prefix(1);
    constexpr std::int64_t huge = 1'000'000'000'000;
    std::int64_t exponent = 0;
    const auto read = std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    if (read.ec == std::errc::result_out_of_range || exponent > huge) exponent = huge;
    const auto point = static_cast<std::int64_t>(std::min(mantissa.find('.'), mantissa.size()));
    return point - static_cast<std::int64_t>(first) + (isNegative ? -exponent : exponent) < 0;
  }

  bool readString() {
    for (++position_; !isAtEnd(); ++position_) {
      const auto c = static_cast<unsigned char>(text_[position_]);
      if (c < 0x20) return fail("a control character stands in a string");
      if (c == '"') {
        ++position_;
        return true;
      }
      if (c == '\\' && !readEscape()) return false;
    }
    return fail("");
  }

  /// Leaves the position at the escape's last character.
  bool readEscape() {
    const std::size_t begin = position_++;
    if (isAtEnd()) return fail("");
    if (peek() != 'u') return std::string_view("\"\\/bfnrt").contains(peek()) || fail("an escape is unknown");
    const auto unit = readUnit();
    if (!unit) return fail("an escape is not four hexadecimal digits");
    if (*unit < 0xD800 || *unit > 0xDFFF) return true;
    if (*unit < 0xDC00 && text_.substr(position_ + 1).starts_with("\\u")) {
      position_ += 2;
      const auto low = readUnit();
      if (!low) return fail("an escape is not four hexadecimal digits");
      if (*low >= 0xDC00 && *low <= 0xDFFF) return true;
    }
    position_ = begin;
    return fail("half of a surrogate pair is missing");
  }

  /// The four digits behind a "u".
  std::optional<unsigned> readUnit() {
    unsigned value = 0;
    for (int i = 0; i < 4; ++i) {
      ++position_;
      if (isAtEnd()) return std::nullopt;
      unsigned digit = 0;
      if (std::from_chars(&text_[position_], &text_[position_] + 1, digit, 16).ec != std::errc{}) return std::nullopt;
      value = 16 * value + digit;
    }
    return value;
  }

  std::string_view text_;
  std::size_t maximumDepth_;
  std::size_t position_ = 0;
  std::string open_;  // the brackets that are still to come, the innermost last
  std::string_view reason_;
  bool isTooDeep_ = false;
};

}  // namespace

JsonError locateJsonError(std::string_view text, std::size_t maximumDepth, std::string_view fallbackReason) {
  const auto fault = JsonScanner(text, maximumDepth).scan();
  const auto invalid = findInvalidUtf8(text);
  if (invalid && (!fault || *invalid <= fault->offset)) return JsonError(JsonError::NotUtf8{*invalid});
  if (!fault) return JsonError(JsonError::Malformed{text.size(), std::string(fallbackReason)});
  if (fault->isTooDeep) return JsonError(JsonError::TooDeep{fault->offset, maximumDepth});
  return JsonError(JsonError::Malformed{fault->offset, std::string(fault->reason)});
}

}  // namespace quillo
