#include "QuilloCore/Artifacts/TextInterner.h"

#include <algorithm>

#include "QuilloCore/Support/Utf16.h"

namespace quillo {

TextInterner::TextInterner(const std::vector<std::string_view>& strings) {
  ids_.reserve(strings.size());
  for (const std::string_view text : strings) {
    if (ids_.try_emplace(text, 0).second) texts_.push_back(text);
  }
  std::ranges::sort(texts_);  // char_traits compares bytes as unsigned
  for (std::size_t i = 0; i < texts_.size(); ++i) ids_.find(texts_[i])->second = static_cast<std::int64_t>(i);
}

CanonicalAccessibilityTextBlob TextInterner::makeBlob(std::size_t number, Sha256Hasher& hasher) const {
  const std::string_view text = texts_[number];
  return {.id = static_cast<std::int64_t>(number),
          .sha256 = hexadecimalText(hasher.digest(text)),
          .utf8ByteCount = static_cast<std::int64_t>(text.size()),
          .utf16Length = utf16Length(text),
          .text = std::string(text)};
}

}  // namespace quillo
