#include "QuilloCore/Support/WhiteSpace.h"

#include <unicode/uchar.h>

#include <cstddef>

#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

/// The first code point at or after `position` for which `isWhiteSpace` is `wanted`; the text's size without one.
std::size_t findWhiteSpace(std::string_view text, std::size_t position, bool wanted) {
  while (position < text.size()) {
    std::size_t next = position;
    if (isWhiteSpace(nextCodePoint(text, next)) == wanted) break;
    position = next;
  }
  return position;
}

bool isControlOrLineBreak(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

}  // namespace

bool isWhiteSpace(char32_t codePoint) {
  if (codePoint < 0x80) return codePoint == ' ' || (codePoint >= 0x09 && codePoint <= 0x0D);
  return u_isUWhiteSpace(static_cast<UChar32>(codePoint)) != 0;
}

std::string_view trimmingWhiteSpace(std::string_view text) {
  text.remove_prefix(findWhiteSpace(text, 0, false));
  while (!text.empty()) {
    std::size_t last = text.size() - 1;
    while (last > 0 && (static_cast<unsigned char>(text[last]) & 0xC0U) == 0x80U) --last;
    std::size_t position = last;
    if (!isWhiteSpace(nextCodePoint(text, position))) break;
    text.remove_suffix(text.size() - last);
  }
  return text;
}

std::string collapsingWhiteSpace(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const std::string_view piece : splittingAtWhiteSpace(text)) {
    if (!result.empty()) result += ' ';
    result += piece;
  }
  return result;
}

std::vector<std::string_view> splittingAtWhiteSpace(std::string_view text) {
  std::vector<std::string_view> pieces;
  for (std::size_t begin = findWhiteSpace(text, 0, false); begin < text.size();) {
    const std::size_t end = findWhiteSpace(text, begin, true);
    pieces.push_back(text.substr(begin, end - begin));
    begin = findWhiteSpace(text, end, false);
  }
  return pieces;
}

std::string normalizingLineBreaks(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (!isPair) result += text[i] == '\r' ? '\n' : text[i];
  }
  return result;
}

std::string bringingToOneLine(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  bool isInRun = false;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    const bool isBreak = isControlOrLineBreak(nextCodePoint(text, position));
    if (!isBreak) result.append(text, begin, position - begin);
    if (isBreak && !isInRun) result += ' ';
    isInRun = isBreak;
  }
  return std::string(trimmingWhiteSpace(result));
}

}  // namespace quillo
