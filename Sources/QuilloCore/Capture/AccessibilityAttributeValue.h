#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "QuilloCore/Support/Geometry.h"
#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// Stands for text that was not read because its element holds protected content.
struct RedactedValue {
  friend bool operator==(const RedactedValue&, const RedactedValue&) = default;
};

/// The value of one accessibility attribute, kept as the application typed it. As JSON an object with "type" (the tag)
/// and, but for a redacted value, "value".
using AccessibilityAttributeValue =
    std::variant<std::string, bool, std::int64_t, double, ArtifactRect, ArtifactPoint, ArtifactSize, ArtifactTextRange,
                 std::vector<std::string>, RedactedValue>;

template <>
struct JsonCodec<AccessibilityAttributeValue> {
  static void write(JsonWriter& writer, const AccessibilityAttributeValue& value);
  static AccessibilityAttributeValue read(const JsonCursor& cursor);
};

}  // namespace quillo
