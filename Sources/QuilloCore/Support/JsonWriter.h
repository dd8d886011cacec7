#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "QuilloCore/Support/JsonFields.h"

namespace quillo {

enum class JsonStyle {
  compact,
  prettyPrinted,  ///< two blanks a level, one member a line
};

/// Writes JSON text as a stream of events; slashes stay unescaped. The caller opens and closes what it nests and gives
/// keys in ascending order; text must be UTF-8.
class JsonWriter {
 public:
  /// `expectedSize` spares a long text moves as it grows.
  explicit JsonWriter(JsonStyle style, std::size_t expectedSize = 0) : style_(style) { grow(expectedSize); }

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  void key(std::string_view name);
  /// The same for a key without characters that are to be escaped, as those of all field tables are.
  void plainKey(std::string_view name) {
    if (style_ != JsonStyle::compact) return key(name);
    char* const first = room(name.size() + 4);
    char* out = first;
    *out = ',';
    if (!isFirst_) ++out;
    *out++ = '"';
    out = std::copy(name.begin(), name.end(), out);
    *out++ = '"';
    *out++ = ':';
    size_ += static_cast<std::size_t>(out - first);
    isFirst_ = false;
    followsKey_ = true;
  }

  void string(std::string_view text);
  void boolean(bool value);
  void integer(std::int64_t value);
  /// Shortest text that reads back as the same double. Throws JsonError::NotFinite for infinities and NaN.
  void number(double value);
  /// A value that is JSON text already; it is neither checked nor spaced anew.
  void verbatim(std::string_view json);

  std::string takeText();

 private:
  void begin(char bracket) {
    separate();
    append(bracket);
    ++depth_;
    isFirst_ = true;
  }
  void end(char bracket) {
    --depth_;
    if (!isFirst_) indent();
    append(bracket);
    isFirst_ = false;
  }
  void separate() {
    if (std::exchange(followsKey_, false)) return;
    if (!isFirst_) append(',');
    if (depth_ > 0) indent();
    isFirst_ = false;
  }
  void indent() {
    if (style_ != JsonStyle::compact) beginLine();
  }
  void beginLine();
  void quoted(std::string_view text);
  void escaped(unsigned char c);
  void append(std::string_view text);
  void append(char c) { *room(1) = c, ++size_; }
  /// Where the next bytes go; at least so many fit.
  char* room(std::size_t count) {
    if (text_.size() - size_ < count) grow(count);
    return text_.data() + size_;
  }
  void grow(std::size_t count);

  JsonStyle style_;
  std::string text_;      // longer than what has been written
  std::size_t size_ = 0;  // bytes written
  std::size_t depth_ = 0;
  bool isFirst_ = true;
  bool followsKey_ = false;
};

/// How a type that is neither a record nor a named enumeration travels as JSON: specialise with
/// `static void write(JsonWriter&, const T&)` and `static T read(const JsonCursor&)`.
template <class T>
struct JsonCodec;

template <class T>
void writeJson(JsonWriter& writer, const T& value);

template <class T>
void writeJson(JsonWriter& writer, const std::vector<T>& values) {
  writer.beginArray();
  for (const auto& value : values) writeJson(writer, value);
  writer.endArray();
}

namespace detail {

template <class T>
inline constexpr bool isOptional = false;
template <class T>
inline constexpr bool isOptional<std::optional<T>> = true;

/// The key and the value of one member, or nothing when it is absent.
template <class Record, class Field>
void writeField(JsonWriter& writer, const Record& record, const Field& field) {
  const auto& member = record.*field.member;
  if constexpr (isOptional<std::remove_cvref_t<decltype(member)>>) {
    if (!member) return;
    writer.plainKey(field.key);
    writeJson(writer, *member);
  } else {
    writer.plainKey(field.key);
    writeJson(writer, member);
  }
}

template <class Record>
void writeRecord(JsonWriter& writer, const Record& record) {
  writer.beginObject();
  forEachSortedField<Record>([&](const auto& field) { writeField(writer, record, field); });
  writer.endObject();
}

}  // namespace detail

template <class T>
void writeJson(JsonWriter& writer, const T& value) {
  if constexpr (std::same_as<T, bool>) {
    writer.boolean(value);
  } else if constexpr (std::integral<T>) {
    writer.integer(static_cast<std::int64_t>(value));
  } else if constexpr (std::floating_point<T>) {
    writer.number(value);
  } else if constexpr (std::convertible_to<T, std::string_view>) {
    writer.string(value);
  } else if constexpr (NamedEnumeration<T>) {
    writer.string(nameOf(value));
  } else if constexpr (JsonRecord<T>) {
    detail::writeRecord(writer, value);
  } else {
    JsonCodec<T>::write(writer, value);
  }
}

/// The JSON text of a record: keys sorted in every object, absent optional members omitted, no final line feed.
template <class T>
std::string encodeJson(const T& value, JsonStyle style) {
  JsonWriter writer(style);
  writeJson(writer, value);
  return writer.takeText();
}

}  // namespace quillo
