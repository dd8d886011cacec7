#include "QuilloCore/Semantics/UncoveredSpans.h"

#include <fmt/format.h>

#include <cstddef>
#include <iterator>

#include "QuilloCore/Semantics/PrintableText.h"
#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

std::size_t endOfWord(std::string_view text, std::size_t position, std::size_t limit) {
  while (position < limit) {
    std::size_t next = position;
    if (isWhiteSpace(nextCodePoint(text, next))) break;
    position = next;
  }
  return position;
}

std::size_t beginOfWord(std::string_view text, std::size_t position, std::size_t limit) {
  while (position > limit) {
    std::size_t previous = position - 1;
    while (previous > limit && (static_cast<unsigned char>(text[previous]) & 0xC0U) == 0x80U) --previous;
    std::size_t next = previous;
    if (isWhiteSpace(nextCodePoint(text, next))) break;
    position = previous;
  }
  return position;
}

void appendIndentingFurtherLines(std::string& result, std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    nextCodePoint(text, position);
    const std::string_view character = text.substr(begin, position - begin);
    if (!hasLineBreak(character)) {
      result += character;
    } else if (!(character == "\r" && text.substr(position).starts_with('\n'))) {
      result += "\n  ";
    }
  }
}

}  // namespace

std::string uncoveredSpans(std::string_view text, std::span<const SemanticToken> tokens,
                           const TokenSequenceIndex& index) {
  const Utf16Index units(text);
  std::string result;
  for (std::size_t i = 0; i < tokens.size();) {
    if (index.isConsumed(i)) {
      ++i;
      continue;
    }
    const std::size_t first = i;
    while (i < tokens.size() && !index.isConsumed(i)) ++i;
    const std::size_t begin = beginOfWord(text, tokens[first].begin, first == 0 ? 0 : tokens[first - 1].end);
    const std::size_t end = endOfWord(text, tokens[i - 1].end, i == tokens.size() ? text.size() : tokens[i].begin);
    if (!result.empty()) result += '\n';
    fmt::format_to(std::back_inserter(result),
                   "uncovered source span (UTF-16 {} to {} of {}): ", units.utf16Offset(begin), units.utf16Offset(end),
                   units.length());
    appendIndentingFurtherLines(result, text.substr(begin, end - begin));
  }
  return result;
}

}  // namespace quillo
