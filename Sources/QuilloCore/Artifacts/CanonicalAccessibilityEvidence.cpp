#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"

#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace quillo {
namespace {

using Value = CanonicalAccessibilityAttributeValue;

// In the order of the variant's alternatives.
constexpr std::array<std::string_view, std::variant_size_v<Value>> tags = {
    "text", "boolean", "integer", "number", "rect", "point", "size", "range", "textList", "redacted"};

template <class Payload>
Value readPayload(const JsonCursor& cursor) {
  if constexpr (std::is_same_v<Payload, RedactedValue>) {
    return RedactedValue{};
  } else if constexpr (std::is_same_v<Payload, TextBlobReference>) {
    return TextBlobReference{readJson<std::int64_t>(cursor.require("textBlobID"))};
  } else if constexpr (std::is_same_v<Payload, TextBlobListReference>) {
    return TextBlobListReference{readJson<std::vector<std::int64_t>>(cursor.require("textBlobIDs"))};
  } else {
    return readJson<Payload>(cursor.require("value"));
  }
}

template <std::size_t index = 0>
Value readTagged(std::size_t tag, const JsonCursor& cursor) {
  if constexpr (index == tags.size()) {
    std::unreachable();
  } else {
    if (tag != index) return readTagged<index + 1>(tag, cursor);
    return readPayload<std::variant_alternative_t<index, Value>>(cursor);
  }
}

// Keys in ascending order: "textBlobID", "textBlobIDs" < "type" < "value".
struct WriteTagged {
  JsonWriter& writer;
  std::string_view tag;

  void writeTag() const {
    writer.key("type");
    writer.string(tag);
  }
  void operator()(const TextBlobReference& reference) const {
    writer.key("textBlobID");
    writer.integer(reference.textBlobID);
    writeTag();
  }
  void operator()(const TextBlobListReference& reference) const {
    writer.key("textBlobIDs");
    writeJson(writer, reference.textBlobIDs);
    writeTag();
  }
  void operator()(const RedactedValue& /*unused*/) const { writeTag(); }
  void operator()(const auto& payload) const {
    writeTag();
    writer.key("value");
    writeJson(writer, payload);
  }
};

[[noreturn]] void failDate(const JsonCursor& cursor) {
  throw JsonError(JsonError::InvalidValue{cursor.path(), "Expected an ISO-8601 capturedAt value."});
}

}  // namespace

void JsonCodec<EvidenceDate>::write(JsonWriter& writer, const EvidenceDate& date) {
  writer.number(secondsSinceReferenceDate(date.date));
}

EvidenceDate JsonCodec<EvidenceDate>::read(const JsonCursor& cursor) {
  if (cursor.isNumber()) {
    const double seconds = cursor.number();
    const Date date = dateFromSecondsSinceReferenceDate(seconds);
    // A moment outside of the years that we can write is moved to the nearest one that we can.
    constexpr double halfSecond = 0.5;
    if (std::abs(secondsSinceReferenceDate(date) - seconds) > halfSecond) failDate(cursor);
    return {date};
  }
  if (!cursor.isString()) failDate(cursor);
  const auto date = parseDate(cursor.string());
  if (!date) failDate(cursor);
  return {*date};
}

void JsonCodec<Value>::write(JsonWriter& writer, const Value& value) {
  writer.beginObject();
  std::visit(WriteTagged{writer, tags[value.index()]}, value);
  writer.endObject();
}

Value JsonCodec<Value>::read(const JsonCursor& cursor) {
  const JsonCursor type = cursor.require("type");
  const std::string_view name = type.string();
  for (std::size_t i = 0; i < tags.size(); ++i) {
    if (tags[i] == name) return readTagged(i, cursor);
  }
  throw JsonError(JsonError::UnknownName{type.path(), std::string(name)});
}

}  // namespace quillo
