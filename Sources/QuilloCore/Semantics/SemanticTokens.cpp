#include "QuilloCore/Semantics/SemanticTokens.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

enum class Kind : std::uint8_t { separator, lowerOrDigit, capital, other, unspaced, mark };

Kind asciiKind(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) return Kind::lowerOrDigit;
  return c >= 'A' && c <= 'Z' ? Kind::capital : Kind::separator;
}

/// Thai, Lao, Burmese, Khmer, kana and Han.
bool isOfUnspacedScript(char32_t c) {
  struct Range {
    char32_t first;
    char32_t last;
  };
  static constexpr std::array<Range, 8> ranges = {{{0x0E01, 0x0EFF},
                                                   {0x1000, 0x109F},
                                                   {0x1780, 0x17FF},
                                                   {0x3005, 0x3007},
                                                   {0x3041, 0x30FF},
                                                   {0x3400, 0x9FFF},
                                                   {0xF900, 0xFAFF},
                                                   {0x20000, 0x3FFFF}}};
  return std::ranges::any_of(ranges, [c](Range range) { return c >= range.first && c <= range.last; });
}

Kind kindAt(std::string_view text, std::size_t& position) {
  if (static_cast<unsigned char>(text[position]) < 0x80) return asciiKind(text[position++]);
  const char32_t c = nextCodePoint(text, position);
  if (!isLetterDigitOrMark(c)) return Kind::separator;
  if (isOfUnspacedScript(c)) return isMark(c) ? Kind::mark : Kind::unspaced;
  return Kind::other;
}

/// Calls `visit(begin, end)` for every token.
template <class Visitor>
void forEachToken(std::string_view text, Visitor visit) {
  constexpr std::size_t none = std::string_view::npos;
  std::size_t begin = none;
  Kind previous = Kind::separator;
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t here = position;
    const Kind kind = kindAt(text, position);
    const bool isNewWord = (kind == Kind::capital && previous == Kind::lowerOrDigit) || kind == Kind::unspaced ||
                           (previous == Kind::unspaced && kind != Kind::mark) || kind == Kind::separator;
    if (begin != none && isNewWord) {
      visit(begin, here);
      begin = none;
    }
    if (begin == none && kind != Kind::separator) begin = here;
    // A mark belongs to the letter before it and lets it stay the last one.
    if (kind != Kind::mark || begin == here) previous = kind;
  }
  if (begin != none) visit(begin, text.size());
}

}  // namespace

std::uint32_t SemanticTokenizer::wordNumber(std::string_view token) {
  const bool isLower = std::ranges::all_of(token, [](char c) { return asciiKind(c) == Kind::lowerOrDigit; });
  if (!isLower) {
    scratch_ = lowercased(token);
    token = scratch_;
  }
  if (const auto found = numbers_.find(token); found != numbers_.end()) return found->second;
  words_.emplace_back(token);
  return numbers_.emplace(words_.back(), static_cast<std::uint32_t>(numbers_.size())).first->second;
}

std::vector<SemanticToken> SemanticTokenizer::tokenize(std::string_view text) {
  std::vector<SemanticToken> tokens;
  forEachToken(text, [&](std::size_t begin, std::size_t end) {
    tokens.push_back({.word = wordNumber(text.substr(begin, end - begin)),
                      .begin = static_cast<std::uint32_t>(begin),
                      .end = static_cast<std::uint32_t>(end)});
  });
  return tokens;
}

void SemanticTokenizer::appendWords(std::string_view text, std::vector<std::uint32_t>& words) {
  forEachToken(
      text, [&](std::size_t begin, std::size_t end) { words.push_back(wordNumber(text.substr(begin, end - begin))); });
}

}  // namespace quillo
