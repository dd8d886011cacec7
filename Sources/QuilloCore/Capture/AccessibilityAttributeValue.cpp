#include "QuilloCore/Capture/AccessibilityAttributeValue.h"

#include <array>
#include <string_view>
#include <type_traits>
#include <utility>

namespace quillo {
namespace {

// In the order of the variant's alternatives.
constexpr std::array<std::string_view, std::variant_size_v<AccessibilityAttributeValue>> tags = {
    "string", "boolean", "integer", "number", "rect", "point", "size", "range", "strings", "redacted"};

template <std::size_t index = 0>
AccessibilityAttributeValue readTagged(std::size_t tag, const JsonCursor& cursor) {
  if constexpr (index == tags.size()) {
    std::unreachable();
  } else {
    if (tag != index) return readTagged<index + 1>(tag, cursor);
    using Payload = std::variant_alternative_t<index, AccessibilityAttributeValue>;
    if constexpr (std::is_same_v<Payload, RedactedValue>) {
      return RedactedValue{};
    } else {
      return AccessibilityAttributeValue(std::in_place_index<index>, readJson<Payload>(cursor.require("value")));
    }
  }
}

}  // namespace

void JsonCodec<AccessibilityAttributeValue>::write(JsonWriter& writer, const AccessibilityAttributeValue& value) {
  writer.beginObject();
  writer.key("type");
  writer.string(tags[value.index()]);
  std::visit(
      [&](const auto& payload) {
        if constexpr (!std::is_same_v<std::remove_cvref_t<decltype(payload)>, RedactedValue>) {
          writer.key("value");
          writeJson(writer, payload);
        }
      },
      value);
  writer.endObject();
}

AccessibilityAttributeValue JsonCodec<AccessibilityAttributeValue>::read(const JsonCursor& cursor) {
  const JsonCursor type = cursor.require("type");
  const std::string_view name = type.string();
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (tags[i] == name) return readTagged(i, cursor);
  }
  throw JsonError(JsonError::UnknownName{type.path(), std::string(name)});
}

}  // namespace quillo
