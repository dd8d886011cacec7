#pragma once

#include <cstdint>
#include <string_view>
#include <tuple>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"
#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

/// A text blob of a file that is parsed or written, nothing copied.
struct TextBlobInFile {
  std::int64_t id = 0;
  std::string_view sha256;
  std::int64_t utf8ByteCount = 0;
  std::int64_t utf16Length = 0;
  std::string_view text;
};

/// An attribute likewise.
struct AttributeInFile {
  std::string_view name;
  CanonicalAccessibilityAttributeValue value;
};

template <>
struct JsonFields<AttributeInFile> {
  using R = AttributeInFile;
  static constexpr auto table = std::tuple{jsonField("name", &R::name), jsonField("value", &R::value)};
};

template <>
struct JsonFields<TextBlobInFile> {
  using R = TextBlobInFile;
  static constexpr auto table = std::tuple{jsonField("id", &R::id), jsonField("sha256", &R::sha256),
                                           jsonField("utf8ByteCount", &R::utf8ByteCount),
                                           jsonField("utf16Length", &R::utf16Length), jsonField("text", &R::text)};
};

}  // namespace quillo
