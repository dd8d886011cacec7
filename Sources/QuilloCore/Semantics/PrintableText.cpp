#include "QuilloCore/Semantics/PrintableText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr char32_t attachment = U'\uFFFC';
constexpr char32_t markerBracket = U'\u27E6';

bool isLineBreak(char32_t c) {
  return (c >= U'\n' && c <= U'\r') || c == U'\u0085' || c == U'\u2028' || c == U'\u2029';
}

/// Joiners and variation selectors are not among them: they choose how emoji and letters look.
bool isInvisibleArrangement(char32_t c) {
  switch (c) {
    case U'\u00AD':  // soft hyphen
    case U'\u061C':  // directional marks
    case U'\u200E':
    case U'\u200F':
    case U'\u180E':  // Mongolian vowel separator
    case U'\u200B':  // zero-width space
    case U'\uFEFF': return true;
    default:
      return (c >= U'\u202A' && c <= U'\u202C') ||  // embeddings and their end
             (c >= U'\u2060' && c <= U'\u206F');    // word joiner, invisible operators, isolates
  }
}

/// What hides or reorders text, or drives a terminal.
bool mustBeShown(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
  return (isControl && c != U'\t' && !isLineBreak(c)) || c == U'\u202D' || c == U'\u202E' ||
         (c >= U'\U000E0000' && c <= U'\U000E007F');
}

/// No character that the functions below treat specially, so that most texts are copied in one go.
bool isPlainAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

void appendShown(std::string& result, char32_t c) {
  fmt::format_to(std::back_inserter(result), "⟦U+{:04X}⟧", static_cast<std::uint32_t>(c));
}

}  // namespace

bool hasVisibleText(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = nextCodePoint(text, position);
    if (!isWhiteSpace(c) && !isInvisibleArrangement(c) && c != attachment) return true;
  }
  return false;
}

bool hasLineBreak(std::string_view text) {
  if (isPlainAscii(text)) return false;
  for (std::size_t position = 0; position < text.size();) {
    if (isLineBreak(nextCodePoint(text, position))) return true;
  }
  return false;
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  result.reserve(text.size() + 2);
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    const char32_t c = nextCodePoint(text, position);
    if (c == U'\\' || c == U'"') {
      result += '\\';
      result += static_cast<char>(c);
    } else if (c == U'\n') {
      result += "\\n";
    } else if (c == U'\r') {
      result += "\\r";
    } else if (c == attachment) {
      result += ' ';
    } else if (isLineBreak(c) || mustBeShown(c)) {
      fmt::format_to(std::back_inserter(result), "\\u{{{:X}}}", static_cast<std::uint32_t>(c));
    } else if (!isInvisibleArrangement(c)) {
      result.append(text, begin, position - begin);
    }
  }
  result += '"';
  return result;
}

std::string onOneLine(std::string_view text) {
  if (isPlainAscii(text)) return std::string(trimmingWhiteSpace(text));
  std::vector<std::string> lines(1);
  appendBlockText(lines, text);
  std::string result;
  for (const std::string& line : lines) {
    const std::string_view trimmed = trimmingWhiteSpace(line);
    if (!result.empty() && !trimmed.empty()) result += ' ';
    result += trimmed;
  }
  return result;
}

std::string bareOrQuoted(std::string_view text, std::string_view punctuation) {
  const bool isBare = text.find_first_of(punctuation) == std::string_view::npos && !hasLineBreak(text);
  return isBare ? onOneLine(text) : quoted(text);
}

void appendBlockText(std::vector<std::string>& lines, std::string_view text) {
  if (isPlainAscii(text)) {
    lines.back() += text;
    return;
  }
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    const char32_t c = nextCodePoint(text, position);
    if (isLineBreak(c)) {
      if (c == U'\r' && position < text.size() && text[position] == '\n') ++position;
      lines.emplace_back();
    } else if (c == attachment) {
      lines.back() += ' ';
    } else if (mustBeShown(c) || c == markerBracket) {
      appendShown(lines.back(), c);
    } else if (!isInvisibleArrangement(c)) {
      lines.back().append(text, begin, position - begin);
    }
  }
}

}  // namespace quillo
