#include "QuilloCore/Support/JsonReader.h"

#include <fmt/format.h>
#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <mutex>
#include <new>
#include <system_error>
#include <utility>

#include "QuilloCore/Support/JsonErrorLocation.h"

namespace quillo {
namespace {

using simdjson::dom::element;
using simdjson::dom::element_type;

using MemberIterator = simdjson::dom::object::iterator;
using ElementIterator = simdjson::dom::array::iterator;

/// What the parser's references consist of.
struct TapeReference {
  const void* document;
  std::size_t position;
};
static_assert(sizeof(element) == sizeof(TapeReference) && std::is_trivially_copyable_v<element>);
static_assert(sizeof(MemberIterator) == sizeof(TapeReference) && std::is_trivially_copyable_v<MemberIterator>);
static_assert(sizeof(ElementIterator) == sizeof(TapeReference) && std::is_trivially_copyable_v<ElementIterator>);
static_assert(JsonDocument::paddingSize >= simdjson::SIMDJSON_PADDING);

template <class Reference>
Reference referTo(const void* document, std::size_t position) {
  return std::bit_cast<Reference>(TapeReference{document, position});
}

element elementOf(const auto& handle) {
  return referTo<element>(handle.document, handle.position);
}

std::size_t positionOf(const auto& reference) {
  return std::bit_cast<TapeReference>(reference).position;
}

template <class Word>
Word wordAt(std::string_view text, std::size_t offset) {
  Word word;
  std::memcpy(&word, text.data() + offset, sizeof(word));
  return word;
}

/// Whether two keys are equal. Most have 4 to 16 bytes, which two words that may overlap compare sooner than a call.
bool areEqualKeys(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  const auto endsAreEqual = [&]<class Word>(Word /*type*/) {
    const std::size_t last = a.size() - sizeof(Word);
    return wordAt<Word>(a, 0) == wordAt<Word>(b, 0) && wordAt<Word>(a, last) == wordAt<Word>(b, last);
  };
  using Long = std::uint64_t;
  using Short = std::uint32_t;
  if (a.size() > 2 * sizeof(Long) || a.size() < sizeof(Short)) return a == b;
  return a.size() >= sizeof(Long) ? endsAreEqual(Long()) : endsAreEqual(Short());
}

/// The parser refuses integers beyond 64 bits, which are as good as any number where a double is read, or nothing. With
/// a fraction of zero it takes them. What is no JSON does not become any.
std::string givingLongIntegersFractions(std::string_view text) {
  std::string result;
  result.reserve(text.size() + JsonDocument::paddingSize);
  bool isInString = false;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t numberEnd = std::min(text.find_first_not_of("0123456789+-.eE", i), text.size());
    const std::string_view number = isInString ? "" : text.substr(i, numberEnd - i);
    const bool isEscape = isInString && text[i] == '\\';
    if (!isEscape && text[i] == '"') isInString = !isInString;
    const std::string_view piece = number.empty() ? text.substr(i, isEscape ? 2 : 1) : number;
    result += piece;
    i += piece.size();
    std::int64_t value = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), value);
    const bool isWhole = read.ptr == number.data() + number.size();
    if (isWhole && read.ec == std::errc::result_out_of_range) result += ".0";
  }
  return result;
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
  // The first double that no longer fits. Its negative would fit, but integers too large for 64 bits are rounded to it.
  constexpr double bound = 9223372036854775808.0;
  const bool isWhole = value.is_double() && value.get_double().get(number) == simdjson::SUCCESS &&
                       std::trunc(number) == number && std::abs(number) < bound;
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
  return JsonCursor({handle_.document, positionOf(member)}, this, key, 0);
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

JsonCursor::Extent JsonCursor::elements() const {
  simdjson::dom::array array;
  if (elementOf(handle_).get_array().get(array) != simdjson::SUCCESS) failWrongType("an array");
  return {positionOf(array.begin()), positionOf(array.end())};
}

std::size_t JsonCursor::after(std::size_t element) const {
  auto iterator = referTo<ElementIterator>(handle_.document, element);
  return positionOf(++iterator);
}

JsonMembers::JsonMembers(const JsonCursor& object) : object_(object) {
  simdjson::dom::object members;
  if (elementOf(object.handle_).get_object().get(members) != simdjson::SUCCESS) object.failWrongType("an object");
  next_ = positionOf(members.begin());
  end_ = positionOf(members.end());
}

std::size_t JsonMembers::locate(std::string_view key) {
  // What has been passed is less than the key, so that the first equal one is the first of all.
  bool areLess = true;
  auto member = referTo<MemberIterator>(object_.handle_.document, next_);
  while (positionOf(member) != end_) {
    const std::string_view found = member.key();
    const bool isWanted = areEqualKeys(found, key);  // nearly always, and told sooner than the order
    const std::size_t value = positionOf(member.value());
    areLess = areLess && (isWanted || found < key);
    ++member;
    if (areLess) next_ = positionOf(member);
    if (isWanted) return value;
  }
  return nothing;
}

std::optional<JsonCursor> JsonMembers::find(std::string_view key) {
  const std::size_t position = locate(key);
  if (position == nothing) return std::nullopt;
  return cursorAt(position, key);
}

JsonCursor JsonMembers::require(std::string_view key) {
  const std::size_t position = locate(key);
  if (position == nothing) throw JsonError(JsonError::MissingMember{object_.path(), std::string(key)});
  return cursorAt(position, key);
}

struct JsonDocument::Storage {
  simdjson::dom::parser parser;
  element root;

  simdjson::error_code parse(std::string_view text, bool isPadded) {
    auto failure = simdjson::SUCCESS;
    // The parser counts the document itself as a level.
    if (parser.capacity() < text.size() || parser.max_depth() != maximumDepth + 1)
      failure = parser.allocate(text.size(), maximumDepth + 1);
    return failure != simdjson::SUCCESS ? failure : parser.parse(text.data(), text.size(), !isPadded).get(root);
  }
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
  if (isMemoryKept_) spareStorage<Storage>().giveBack(std::move(storage_));
}
JsonDocument& JsonDocument::operator=(JsonDocument&& other) noexcept {
  std::swap(storage_, other.storage_);
  std::swap(isMemoryKept_, other.isMemoryKept_);
  return *this;
}

void JsonDocument::giveBackMemory() {
  isMemoryKept_ = false;
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
  auto failure = storage->parse(text, isPadded);
  if (failure == simdjson::NUMBER_ERROR) failure = storage->parse(givingLongIntegersFractions(text), false);
  if (failure == simdjson::MEMALLOC) throw std::bad_alloc();
  if (failure != simdjson::SUCCESS) throw locateJsonError(text, maximumDepth, simdjson::error_message(failure));
  return JsonDocument(std::move(storage));
}

JsonCursor JsonDocument::root() const {
  const auto root = std::bit_cast<TapeReference>(storage_->root);
  return JsonCursor({root.document, root.position}, nullptr, {}, 0);
}

}  // namespace quillo
