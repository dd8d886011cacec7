#include "QuilloCore/Semantics/PrintableText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {
namespace {

constexpr char32_t attachment = U'\uFFFC';
constexpr char32_t markerBracket = U'\u27E6';

bool isLineBreak(char32_t c) {
  return (c >= U'\n' && c <= U'\r') || c == U'\u0085' || c == U'\u2028' || c == U'\u2029';
}

bool isTag(char32_t c) {
  return c >= U'\U000E0000' && c <= U'\U000E007F';
}

/// The selectors that choose among the shapes of an ideograph; behind anything else they only carry something.
bool isSupplementarySelector(char32_t c) {
  return c >= U'\U000E0100' && c <= U'\U000E01EF';
}

bool isIdeograph(char32_t c) {
  return (c >= 0x3400 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x20000 && c <= 0x3FFFF);
}

bool opensDirection(char32_t c) {
  return c == U'\u202A' || c == U'\u202B' || c == U'\u202D' || c == U'\u202E' || (c >= U'\u2066' && c <= U'\u2068');
}

bool closesDirection(char32_t c) {
  return c == U'\u202C' || c == U'\u2069';
}

/// Characters without a shape of their own, most of which join, part or direct those beside them.
bool isInvisible(char32_t c) {
  switch (c) {
    case U'\u00AD':  // soft hyphen
    case U'\u034F':  // grapheme joiner
    case U'\u061C':  // Arabic letter mark
    case U'\u115F':  // Hangul fillers
    case U'\u1160':
    case U'\u3164':
    case U'\uFFA0':
    case U'\u180E':  // Mongolian vowel separator
    case U'\uFEFF': return true;
    default:
      return (c >= U'\u200B' && c <= U'\u200F') ||  // zero-width space, joiners, directional marks
             (c >= U'\u202A' && c <= U'\u202E') ||  // embeddings and overrides
             (c >= U'\u2060' && c <= U'\u206F') ||  // word joiner, invisible operators, isolates
             (c >= U'\uFE00' && c <= U'\uFE0F') ||  // variation selectors
             isSupplementarySelector(c) || isTag(c);
  }
}

/// What hides or reorders text, or drives a terminal.
bool mustBeShown(char32_t c) {
  const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
  return (isControl && c != U'\t' && !isLineBreak(c)) || c == U'\u202D' || c == U'\u202E' || isTag(c);
}

/// Whether every embedding and isolate ends within the text, so that none reaches what stands behind it.
bool endsItsDirections(std::string_view text) {
  int depth = 0;
  for (std::size_t position = 0; position < text.size() && depth >= 0;) {
    const char32_t c = nextCodePoint(text, position);
    depth += static_cast<int>(opensDirection(c)) - static_cast<int>(closesDirection(c));
  }
  return depth == 0;
}

/// As many invisible characters follow one another in emoji and in carefully set text; more are a message of their own.
constexpr std::size_t longestInvisibleRun = 3;

/// Calls `sink.character` for what prints as it is, `sink.shown` for what must be seen, and `sink.hidden` with the
/// length of a run of invisible characters that is too long to be innocent.
template <class Sink>
void visitCharacters(std::string_view text, Sink&& sink) {
  std::optional<bool> isEnding;
  char32_t previous = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    const char32_t c = nextCodePoint(text, position);
    bool isShown = mustBeShown(c);
    if (isInvisible(c) && !isInvisible(previous)) {
      std::size_t count = 1;
      std::size_t end = position;
      for (std::size_t next = end; next < text.size() && isInvisible(nextCodePoint(text, next)); end = next) ++count;
      if (count > longestInvisibleRun) {
        sink.hidden(count);
        position = end;
        previous = c;
        continue;
      }
    }
    if (isSupplementarySelector(c)) isShown = !isIdeograph(previous);
    if (opensDirection(c) || closesDirection(c)) {
      if (!isEnding) isEnding = endsItsDirections(text);
      isShown = isShown || !*isEnding;
    }
    if (isShown) {
      sink.shown(c);
    } else {
      sink.character(c, text.substr(begin, position - begin));
    }
    previous = c;
  }
}

/// No character that the functions below treat specially, so that most texts are copied in one go.
bool isPlainAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= 0x20 && c < 0x7F; });
}

class QuotedText {
 public:
  explicit QuotedText(std::string& result) : result_(result) {}

  void character(char32_t c, std::string_view bytes) {
    if (c == U'\\' || c == U'"') {
      result_.append("\\").append(bytes);
    } else if (c == U'\n') {
      result_ += "\\n";
    } else if (c == U'\r') {
      result_ += "\\r";
    } else if (isLineBreak(c)) {
      shown(c);
    } else {
      result_ += bytes;
    }
  }

  void shown(char32_t c) { fmt::format_to(std::back_inserter(result_), "\\u{{{:X}}}", static_cast<std::uint32_t>(c)); }

  void hidden(std::size_t count) {
    fmt::format_to(std::back_inserter(result_), "\\{{{} invisible characters}}", count);
  }

 private:
  std::string& result_;
};

class BlockText {
 public:
  explicit BlockText(std::vector<std::string>& lines) : lines_(lines) {}

  void character(char32_t c, std::string_view bytes) {
    const bool endsPair = c == U'\n' && isAfterCarriageReturn_;
    isAfterCarriageReturn_ = c == U'\r';
    if (endsPair) return;
    if (isLineBreak(c)) {
      lines_.emplace_back();
    } else if (c == markerBracket) {
      shown(c);
    } else {
      lines_.back() += bytes;
    }
  }

  void shown(char32_t c) {
    isAfterCarriageReturn_ = false;
    fmt::format_to(std::back_inserter(lines_.back()), "⟦U+{:04X}⟧", static_cast<std::uint32_t>(c));
  }

  void hidden(std::size_t count) {
    isAfterCarriageReturn_ = false;
    fmt::format_to(std::back_inserter(lines_.back()), "⟦{} invisible characters⟧", count);
  }

 private:
  std::vector<std::string>& lines_;
  bool isAfterCarriageReturn_ = false;
};

}  // namespace

bool hasVisibleText(std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = nextCodePoint(text, position);
    if (!isWhiteSpace(c) && (!isInvisible(c) || mustBeShown(c)) && c != attachment) return true;
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
  if (isPlainAscii(text) && text.find_first_of("\\\"") == std::string_view::npos) {
    result += text;
  } else {
    visitCharacters(text, QuotedText(result));
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
  } else {
    visitCharacters(text, BlockText(lines));
  }
}

}  // namespace quillo
