#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "QuilloCore/Support/JsonError.h"
#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// One value of a parsed document and the way to it. A cursor points to its parent's cursor, which must outlive it, and
/// is valid as long as its document.
class JsonCursor {
 public:
  /// The typed readings throw JsonError::WrongType or JsonError::InvalidValue, naming this cursor's path.
  std::string_view string() const;
  bool boolean() const;
  /// A whole number, also when it is written with a fraction of zero ("2.0").
  std::int64_t integer() const;
  double number() const;

  /// The member of an object; nothing when it is absent. Throws WrongType when this is no object.
  std::optional<JsonCursor> find(std::string_view key) const;
  /// As `find`, but an absent member throws JsonError::MissingMember.
  JsonCursor require(std::string_view key) const;

  /// The keys of an object in their order, a repeated one as often as it stands there. Throws WrongType when this is no
  /// object.
  std::vector<std::string_view> keys() const;

  /// This value as compact JSON text, for values that are passed on and not understood.
  std::string text() const;

  /// Of an array. Throws WrongType when this is none.
  std::size_t elementCount() const;
  /// Calls `visit(cursor)` for every element of an array, in order. Throws WrongType when this is no array.
  template <class Visitor>
  void forEachElement(Visitor&& visit) const {
    const Extent extent = elements();
    std::size_t position = extent.first;
    for (std::size_t i = 0; position != extent.end; ++i, position = after(position)) {
      visit(JsonCursor({handle_.document, position}, this, {}, i));
    }
  }

  std::string path() const;
  bool isString() const;
  bool isNumber() const;

 private:
  friend class JsonDocument;
  friend class JsonMembers;
  /// The parser's own reference to a value. Its halves are kept and passed one by one: what is stored as two words and
  /// loaded as one double word at once, as the parser's type would be, stalls the processor.
  struct Handle {
    const void* document;
    std::size_t position;
  };
  /// Positions of what an array or an object holds.
  struct Extent {
    std::size_t first;
    std::size_t end;
  };

  JsonCursor(Handle handle, const JsonCursor* parent, std::string_view key, std::size_t index)
      : handle_(handle), parent_(parent), key_(key), index_(index) {}

  Extent elements() const;
  std::size_t after(std::size_t element) const;
  [[noreturn]] void failWrongType(std::string_view expected) const;

  Handle handle_;
  const JsonCursor* parent_;
  std::string_view key_;
  std::size_t index_;
};

/// The members of one object for a reader that asks for their keys in ascending order. Where they stand in that order
/// too, as in everything that we write, each is found where the one before it ended.
class JsonMembers {
 public:
  /// The cursor must outlive the members. Throws WrongType when it is no object.
  explicit JsonMembers(const JsonCursor& object);

  /// As the functions of JsonCursor.
  std::optional<JsonCursor> find(std::string_view key);
  JsonCursor require(std::string_view key);

 private:
  /// The position of the member's value, or nothing.
  static constexpr std::size_t nothing = 0;
  std::size_t locate(std::string_view key);
  JsonCursor cursorAt(std::size_t position, std::string_view key) const {
    return JsonCursor({object_.handle_.document, position}, &object_, key, 0);
  }

  const JsonCursor& object_;
  std::size_t next_ = 0;
  std::size_t end_ = 0;
};

/// A parsed JSON text. Owns everything that its cursors refer to.
class JsonDocument {
 public:
  static constexpr std::size_t maximumDepth = 1024;

  /// The parser reads so far behind the end of a text; without room for that it works on a copy.
  static constexpr std::size_t paddingSize = 64;

  /// Throws JsonError::Malformed, NotUtf8 or TooDeep; std::bad_alloc for a text too large for the memory.
  static JsonDocument parse(std::string_view text);
  /// The same without the copy, when the text's capacity exceeds its size by the padding.
  static JsonDocument parseInPlace(const std::string& text);

  /// What the parser needs, some five times the text, is kept for the next document unless it is very much. Whoever
  /// reads but one gives it back at once.
  void giveBackMemory();

  JsonDocument(JsonDocument&&) noexcept;
  JsonDocument& operator=(JsonDocument&&) noexcept;
  ~JsonDocument();

  JsonCursor root() const;

 private:
  struct Storage;
  static JsonDocument parse(std::string_view text, bool isPadded);
  explicit JsonDocument(std::unique_ptr<Storage> storage);
  std::unique_ptr<Storage> storage_;
  bool isMemoryKept_ = true;
};

template <class T>
T readJson(const JsonCursor& cursor);

namespace detail {

template <class Record, class Field>
void readField(JsonMembers& members, Record& record, const Field& field) {
  using Member = std::remove_cvref_t<decltype(record.*field.member)>;
  if constexpr (isOptional<Member>) {
    if (const auto member = members.find(field.key))
      record.*field.member = readJson<typename Member::value_type>(*member);
  } else {
    record.*field.member = readJson<Member>(members.require(field.key));
  }
}

template <class T>
struct JsonReading {
  static T read(const JsonCursor& cursor) {
    if constexpr (std::same_as<T, bool>) {
      return cursor.boolean();
    } else if constexpr (std::integral<T>) {
      const std::int64_t value = cursor.integer();
      if (!std::in_range<T>(value))
        throw JsonError(JsonError::InvalidValue{cursor.path(), "the number is out of range"});
      return static_cast<T>(value);
    } else if constexpr (std::floating_point<T>) {
      return cursor.number();
    } else if constexpr (std::same_as<T, std::string> || std::same_as<T, std::string_view>) {
      return T(cursor.string());  // a view as long as the document
    } else if constexpr (NamedEnumeration<T>) {
      const std::string_view name = cursor.string();
      const auto& names = EnumerationNames<T>::names;
      for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i] == name) return static_cast<T>(i);
      }
      throw JsonError(JsonError::UnknownName{cursor.path(), std::string(name)});
    } else if constexpr (JsonRecord<T>) {
      T record{};
      JsonMembers members(cursor);
      forEachSortedField<T>([&](const auto& field) { readField(members, record, field); });
      return record;
    } else {
      return JsonCodec<T>::read(cursor);
    }
  }
};

template <class T>
struct JsonReading<std::vector<T>> {
  static std::vector<T> read(const JsonCursor& cursor) {
    std::vector<T> values;
    values.reserve(cursor.elementCount());
    cursor.forEachElement([&](const JsonCursor& element) { values.push_back(readJson<T>(element)); });
    return values;
  }
};

}  // namespace detail

template <class T>
T readJson(const JsonCursor& cursor) {
  return detail::JsonReading<T>::read(cursor);
}

/// Reads a whole text as one record, a std::string in place. Unknown keys are ignored; of a repeated key the first
/// counts.
template <class T, std::convertible_to<std::string_view> Text>
T decodeJson(const Text& text) {
  JsonDocument document = [&] {
    if constexpr (std::same_as<Text, std::string>) return JsonDocument::parseInPlace(text);
    return JsonDocument::parse(text);
  }();
  document.giveBackMemory();
  return readJson<T>(document.root());
}

}  // namespace quillo
