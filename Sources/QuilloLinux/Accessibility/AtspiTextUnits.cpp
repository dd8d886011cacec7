#include "QuilloLinux/Accessibility/AtspiTextUnits.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "QuilloCore/Support/Utf16.h"
#include "QuilloCore/Support/Utf8.h"

namespace quillo {
namespace {

constexpr std::string_view filler = "\uFEFF";

bool isAstral(std::string_view text, std::size_t position) {
  return (static_cast<unsigned char>(text[position]) & 0xF8U) == 0xF0U;
}

/// Whether every astral character is followed by a filler, and there is one.
bool hasFillers(std::string_view text) {
  bool any = false;
  for (std::size_t position = 0; position < text.size(); ++position) {
    if (!isAstral(text, position)) continue;
    if (text.substr(std::min(position + 4, text.size()), filler.size()) != filler) return false;
    any = true;
  }
  return any;
}

std::string withoutFillers(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const bool isPair = isAstral(text, position);
    const std::size_t start = position;
    nextCodePoint(text, position);
    result.append(text, start, position - start);
    if (isPair) position += filler.size();
  }
  return result;
}

std::int64_t utf16OffsetOfCodePoint(std::string_view text, std::int64_t codePoints) {
  std::size_t position = 0;
  std::int64_t units = 0;
  for (std::int64_t i = 0; i < codePoints && position < text.size(); ++i) {
    units += nextCodePoint(text, position) > 0xFFFF ? 2 : 1;
  }
  return units;
}

}  // namespace

AtspiText interpretText(std::string raw, std::int64_t characterCount) {
  if (hasFillers(raw)) {
    AtspiText text{withoutFillers(raw), AtspiTextUnit::utf16, 0};
    text.utf16Length = utf16Length(text.text);
    return text;
  }
  AtspiText text{std::move(raw), AtspiTextUnit::codePoint, 0};
  text.utf16Length = utf16Length(text.text);
  const auto codePoints = static_cast<std::int64_t>(countCodePoints(text.text));
  if (characterCount == text.utf16Length && characterCount != codePoints) text.unit = AtspiTextUnit::utf16;
  return text;
}

ArtifactTextRange utf16Range(const AtspiText& text, std::int64_t start, std::int64_t end) {
  start = std::max<std::int64_t>(start, 0);
  end = std::max(end, start);
  if (text.unit == AtspiTextUnit::codePoint) {
    start = utf16OffsetOfCodePoint(text.text, start);
    end = utf16OffsetOfCodePoint(text.text, end);
  }
  start = std::min(start, text.utf16Length);
  end = std::min(end, text.utf16Length);
  return {.location = start, .length = end - start};
}

}  // namespace quillo
