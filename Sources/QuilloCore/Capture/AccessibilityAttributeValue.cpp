#include "QuilloCore/Capture/AccessibilityAttributeValue.h"

#include <type_traits>

#include "QuilloCore/Support/JsonTaggedVariant.h"

namespace quillo {
namespace {

// In the order of the variant's alternatives.
constexpr JsonTags<AccessibilityAttributeValue> tags = {"string", "boolean", "integer", "number",  "rect",
                                                        "point",  "size",    "range",   "strings", "redacted"};

struct PayloadReader {
  template <class Payload>
  Payload operator()(const JsonCursor& object) const {
    if constexpr (std::is_same_v<Payload, RedactedValue>) {
      return {};
    } else {
      return readJson<Payload>(object.require("value"));
    }
  }
};

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
  return readTaggedVariant<AccessibilityAttributeValue>(cursor, tags, PayloadReader());
}

}  // namespace quillo
