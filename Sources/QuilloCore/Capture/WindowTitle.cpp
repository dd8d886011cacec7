#include "QuilloCore/Capture/WindowTitle.h"

#include <algorithm>
#include <cstddef>

#include "QuilloCore/Support/LetterCase.h"
#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo::WindowTitle {
namespace {

// Toolkits and window managers add directional and joining marks of their own.
bool isInvisibleMark(char32_t c) {
  return c == 0x00AD || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069) ||
         c == 0xFEFF;
}

bool isSameName(std::string_view a, std::string_view b) {
  return lowercased(a) == lowercased(b);
}

}  // namespace

std::string normalized(std::string_view title) {
  std::string visible;
  visible.reserve(title.size());
  for (std::size_t position = 0; position < title.size();) {
    const std::size_t begin = position;
    if (!isInvisibleMark(nextCodePoint(title, position))) visible += title.substr(begin, position - begin);
  }
  return collapsingWhiteSpace(visible);
}

bool isDecorated(std::string_view title, std::string_view document, std::string_view applicationName) {
  const std::string name = normalized(applicationName);
  if (name.empty() || document.empty() || title.size() <= document.size()) return false;
  return std::ranges::any_of(separators, [&](std::string_view separator) {
    if (title.starts_with(document)) {
      const std::string_view rest = title.substr(document.size());
      if (rest.starts_with(separator) && isSameName(rest.substr(separator.size()), name)) return true;
    }
    if (title.ends_with(document)) {
      const std::string_view rest = title.substr(0, title.size() - document.size());
      if (rest.ends_with(separator) && isSameName(rest.substr(0, rest.size() - separator.size()), name)) return true;
    }
    return false;
  });
}

}  // namespace quillo::WindowTitle
