#include "OutputText.h"

#include "QuilloCore/Support/Utf8.h"

namespace quillo {

std::string showingBreaksAsBlanks(std::string_view text) {
  std::string result;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = nextCodePoint(text, position);
    const bool isBreak = c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
    appendCodePoint(result, isBreak ? U' ' : c);
  }
  return result;
}

std::optional<std::string> joiningLines(const std::vector<std::string>& lines) {
  if (lines.empty()) return std::nullopt;
  std::string text = lines.front();
  for (std::size_t i = 1; i < lines.size(); ++i) text.append("\n").append(lines[i]);
  return text;
}

}  // namespace quillo
