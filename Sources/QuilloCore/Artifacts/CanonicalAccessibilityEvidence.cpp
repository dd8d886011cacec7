#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"

#include <cmath>
#include <type_traits>

#include "QuilloCore/Support/JsonTaggedVariant.h"

namespace quillo {
namespace {

using Value = CanonicalAccessibilityAttributeValue;

// In the order of the variant's alternatives.
constexpr JsonTags<Value> tags = {"text",  "boolean", "integer", "number",   "rect",
                                  "point", "size",    "range",   "textList", "redacted"};

struct PayloadReader {
  template <class Payload>
  Payload operator()(const JsonCursor& object) const {
    if constexpr (std::is_same_v<Payload, RedactedValue>) {
      return {};
    } else if constexpr (std::is_same_v<Payload, TextBlobReference>) {
      return {readJson<std::int64_t>(object.require("textBlobID"))};
    } else if constexpr (std::is_same_v<Payload, TextBlobListReference>) {
      return {readJson<std::vector<std::int64_t>>(object.require("textBlobIDs"))};
    } else {
      return readJson<Payload>(object.require("value"));
    }
  }
};

// Keys in ascending order: "textBlobID", "textBlobIDs" < "type" < "value".
struct WriteTagged {
  JsonWriter& writer;
  std::string_view tag;

  void writeTag() const {
    writer.plainKey("type");
    writer.string(tag);
  }
  void operator()(const TextBlobReference& reference) const {
    writer.plainKey("textBlobID");
    writer.integer(reference.textBlobID);
    writeTag();
  }
  void operator()(const TextBlobListReference& reference) const {
    writer.plainKey("textBlobIDs");
    writeJson(writer, reference.textBlobIDs);
    writeTag();
  }
  void operator()(const RedactedValue& /*unused*/) const { writeTag(); }
  void operator()(const auto& payload) const {
    writeTag();
    writer.plainKey("value");
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
  return readTaggedVariant<Value>(cursor, tags, PayloadReader());
}

}  // namespace quillo
