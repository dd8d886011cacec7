#include "QuilloCore/Support/JsonReader.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <bit>
#include <cmath>
#include <mutex>
#include <utility>

#include "QuilloCore/Support/JsonErrorLocation.h"

namespace quillo {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

static_assert(sizeof(element) == 2 * sizeof(std::uint64_t) && std::is_trivially_copyable_v<element>);
static_assert(sizeof(simdjson::dom::array::iterator) == 2 * sizeof(std::uint64_t));
static_assert(sizeof(simdjson::dom::object::iterator) == 2 * sizeof(std::uint64_t));
static_assert(JsonDocument::paddingSize >= simdjson::SIMDJSON_PADDING);

template <class Handle>
element elementOf(const Handle& handle) {
  return std::bit_cast<element>(handle);
}

std::string_view typeName(element value) {
  switch (value.type()) {
    case element_type::ARRAY: return "an array";
    case element_type::OBJECT: return "an object";
    case element_type::INT64:
    case element_type::UINT64:
    case element_type::DOUBLE: return "a number";
    case element_type::STRING: return "a string";
    case element_type::BOOL: return "a boolean";
    case element_type::NULL_VALUE: return "null";
  }
  std::unreachable();
}

}  // namespace

std::string JsonCursor::path() const {
  if (parent_ == nullptr) return "$";
  std::string text = parent_->path();
  if (!key_.empty()) {
    if (text == "$") return std::string(key_);
    return text + "." + std::string(key_);
  }
  return fmt::format("{}[{}]", text, index_);
}

void JsonCursor::failWrongType(std::string_view expected) const {
  throw JsonError(JsonError::WrongType{path(), std::string(expected), std::string(typeName(elementOf(handle_)))});
}

bool JsonCursor::isString() const {
  return elementOf(handle_).is_string();
}
bool JsonCursor::isNumber() const {
  return elementOf(handle_).is_number();
}

std::string_view JsonCursor::string() const {
  std::string_view text;
  if (elementOf(handle_).get_string().get(text) != simdjson::SUCCESS) failWrongType("a string");
  return text;
}

bool JsonCursor::boolean() const {
  bool value = false;
  if (elementOf(handle_).get_bool().get(value) != simdjson::SUCCESS) failWrongType("a boolean");
  return value;
}

std::int64_t JsonCursor::integer() const {
  const element value = elementOf(handle_);
  std::int64_t integer = 0;
  if (value.is_int64() && value.get_int64().get(integer) == simdjson::SUCCESS) return integer;
  if (!value.is_number()) failWrongType("a whole number");
  double number = 0;
  // Both bounds are exact doubles; the upper one is the first that no longer fits.
  constexpr double upperBound = 9223372036854775808.0;
  const bool isWhole = value.is_double() && value.get_double().get(number) == simdjson::SUCCESS &&
                       std::trunc(number) == number && number >= -upperBound && number < upperBound;
  if (!isWhole) throw JsonError(JsonError::InvalidValue{path(), "it is not a whole number of 64 bits"});
  return static_cast<std::int64_t>(number);
}

double JsonCursor::number() const {
  double value = 0;
  if (elementOf(handle_).get_double().get(value) != simdjson::SUCCESS) failWrongType("a number");
  return value;
}

std::optional<JsonCursor> JsonCursor::find(std::string_view key) const {
  simdjson::dom::object object;
  if (elementOf(handle_).get_object().get(object) != simdjson::SUCCESS) failWrongType("an object");
  element member;
  if (object.at_key(key).get(member) != simdjson::SUCCESS) return std::nullopt;
  return JsonCursor(std::bit_cast<Handle>(member), this, key, 0);
}

JsonCursor JsonCursor::require(std::string_view key) const {
  if (auto member = find(key)) return *member;
  throw JsonError(JsonError::MissingMember{path(), std::string(key)});
}

std::vector<std::string_view> JsonCursor::keys() const {
  simdjson::dom::object object;
  if (elementOf(handle_).get_object().get(object) != simdjson::SUCCESS) failWrongType("an object");
  std::vector<std::string_view> keys;
  for (const auto member : object) keys.push_back(member.key);
  return keys;
}

std::string JsonCursor::text() const {
  return simdjson::minify(elementOf(handle_));
}

std::size_t JsonCursor::elementCount() const {
  simdjson::dom::array array;
  if (elementOf(handle_).get_array().get(array) != simdjson::SUCCESS) failWrongType("an array");
  return array.size();
}

JsonCursor::ElementIteration JsonCursor::beginElements() const {
  simdjson::dom::array array;
  if (elementOf(handle_).get_array().get(array) != simdjson::SUCCESS) failWrongType("an array");
  return {std::bit_cast<Handle>(array.begin()), std::bit_cast<Handle>(array.end())};
}

void JsonCursor::advance(ElementIteration& iteration) {
  auto position = std::bit_cast<simdjson::dom::array::iterator>(iteration.next);
  ++position;
  iteration.next = std::bit_cast<Handle>(position);
}

JsonCursor::Handle JsonCursor::currentElement(const ElementIteration& iteration) {
  const auto position = std::bit_cast<simdjson::dom::array::iterator>(iteration.next);
  return std::bit_cast<Handle>(*position);
}

JsonMembers::JsonMembers(const JsonCursor& object) : object_(object) {
  simdjson::dom::object members;
  if (elementOf(object.handle_).get_object().get(members) != simdjson::SUCCESS) object.failWrongType("an object");
  iteration_ = {std::bit_cast<JsonCursor::Handle>(members.begin()), std::bit_cast<JsonCursor::Handle>(members.end())};
}

std::optional<JsonCursor> JsonMembers::find(std::string_view key) {
  // What has been passed is less than the key, so that the first equal one is the first of all.
  while (iteration_.next != iteration_.end) {
    auto position = std::bit_cast<simdjson::dom::object::iterator>(iteration_.next);
    const std::string_view found = position.key();
    const bool isWanted = found == key;  // nearly always, and told sooner than the order
    if (!isWanted && found > key) break;
    const element value = position.value();
    ++position;
    iteration_.next = std::bit_cast<JsonCursor::Handle>(position);
    if (isWanted) return JsonCursor(std::bit_cast<JsonCursor::Handle>(value), &object_, key, 0);
  }
  return object_.find(key);
}

JsonCursor JsonMembers::require(std::string_view key) {
  if (auto member = find(key)) return *member;
  return object_.require(key);
}

struct JsonDocument::Storage {
  simdjson::dom::parser parser;
  element root;
};

namespace {

/// The parser of the last document, for the next one: two thirds of the time that a large text takes go into the memory
/// that the system hands out and clears. That of very large texts is given back.
template <class Storage>
class SpareStorage {
 public:
  std::unique_ptr<Storage> take() {
    const std::scoped_lock guard(lock_);
    return spare_ ? std::move(spare_) : std::make_unique<Storage>();
  }

  void giveBack(std::unique_ptr<Storage> storage) {
    constexpr std::size_t largestKept = std::size_t{16} * 1024 * 1024;
    if (!storage || storage->parser.capacity() > largestKept) return;
    const std::scoped_lock guard(lock_);
    if (!spare_ || spare_->parser.capacity() < storage->parser.capacity()) spare_.swap(storage);
  }

 private:
  std::mutex lock_;
  std::unique_ptr<Storage> spare_;
};

template <class Storage>
SpareStorage<Storage>& spareStorage() {
  static SpareStorage<Storage> spare;
  return spare;
}

}  // namespace

JsonDocument::JsonDocument(std::unique_ptr<Storage> storage) : storage_(std::move(storage)) {}
JsonDocument::JsonDocument(JsonDocument&&) noexcept = default;
JsonDocument::~JsonDocument() {
  spareStorage<Storage>().giveBack(std::move(storage_));
}
JsonDocument& JsonDocument::operator=(JsonDocument&& other) noexcept {
  std::swap(storage_, other.storage_);
  return *this;
}

JsonDocument JsonDocument::parse(std::string_view text) {
  return parse(text, false);
}

JsonDocument JsonDocument::parseInPlace(const std::string& text) {
  return parse(text, text.capacity() - text.size() >= paddingSize);
}

JsonDocument JsonDocument::parse(std::string_view text, bool isPadded) {
  auto storage = spareStorage<Storage>().take();
  if (text.data() == nullptr) text = "";  // the parser copies even nothing, and not from nowhere
  auto failure = simdjson::SUCCESS;
  // The parser counts the document itself as a level.
  if (storage->parser.capacity() < text.size() || storage->parser.max_depth() != maximumDepth + 1)
    failure = storage->parser.allocate(text.size(), maximumDepth + 1);
  if (failure == simdjson::SUCCESS)
    failure = storage->parser.parse(text.data(), text.size(), !isPadded).get(storage->root);
  if (failure != simdjson::SUCCESS) throw locateJsonError(text, maximumDepth, simdjson::error_message(failure));
  return JsonDocument(std::move(storage));
}

JsonCursor JsonDocument::root() const {
  return JsonCursor(std::bit_cast<JsonCursor::Handle>(storage_->root), nullptr, {}, 0);
}

}  // namespace quillo
