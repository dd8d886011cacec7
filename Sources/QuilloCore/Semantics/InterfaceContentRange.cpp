#include "QuilloCore/Semantics/InterfaceContentRange.h"

#include <cstddef>
#include <cstdint>

#include "QuilloCore/Support/Utf8.h"
#include "QuilloCore/Support/WhiteSpace.h"

namespace quillo {

ArtifactTextRange rangeInCleanText(std::string_view rawText, const ArtifactTextRange& range) {
  if (range.location < 0 || range.length < 0) return range;
  const auto trimmedBegin = static_cast<std::size_t>(trimmingWhiteSpace(rawText).data() - rawText.data());

  ArtifactTextRange clean;
  std::int64_t units = 0;      // UTF-16 units of the raw text before `position`
  std::int64_t keptUnits = 0;  // and of the clean one
  std::size_t position = 0;
  while (position < rawText.size() && units - range.location < range.length) {
    if (units <= range.location) clean.location = keptUnits;
    const std::size_t begin = position;
    const char32_t c = nextCodePoint(rawText, position);
    const bool isBrokenPair = c == U'\r' && position < rawText.size() && rawText[position] == '\n';
    const std::int64_t width = c > U'\uFFFF' ? 2 : 1;
    units += width;
    if (begin >= trimmedBegin && !isBrokenPair) keptUnits += width;
  }
  if (units <= range.location) clean.location = keptUnits;
  if (units - range.location < range.length) return range;
  clean.length = keptUnits - clean.location;
  return clean;
}

}  // namespace quillo
