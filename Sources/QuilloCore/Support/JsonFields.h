#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>

namespace quillo {

/// One member of a record and the key that it has in JSON.
template <class Record, class Member>
struct JsonField {
  std::string_view key;
  Member Record::* member;
};

template <class Record, class Member>
consteval JsonField<Record, Member> jsonField(std::string_view key, Member Record::* member) {
  for (const char c : key) {
    if (c < ' ' || c > '~' || c == '"' || c == '\\') std::unreachable();  // a key needs no escapes
  }
  return {key, member};
}

/// The field table of a record: specialise it with a `static constexpr auto table = std::tuple{jsonField(…), …}`, in
/// declaration order. It is the only place that names the keys: the writer and the reader are both made from it.
/// A member of type std::optional is omitted when empty; every other member is required.
template <class Record>
struct JsonFields;

template <class Record>
concept JsonRecord = requires { JsonFields<Record>::table; };

/// The names of an enumeration's cases: specialise it with a `static constexpr std::array<std::string_view, n> names`
/// indexed by the enumerator's value.
template <class Enumeration>
struct EnumerationNames;

template <class Enumeration>
concept NamedEnumeration = requires { EnumerationNames<Enumeration>::names; };

template <NamedEnumeration Enumeration>
constexpr std::string_view nameOf(Enumeration value) {
  return EnumerationNames<Enumeration>::names[static_cast<std::size_t>(value)];
}

namespace detail {

/// The positions of a field table in ascending order of their keys.
template <class Record>
consteval auto sortedFieldOrder() {
  constexpr std::size_t count = std::tuple_size_v<decltype(JsonFields<Record>::table)>;
  constexpr auto keys = std::apply([](auto... fields) { return std::array<std::string_view, count>{fields.key...}; },
                                   JsonFields<Record>::table);
  std::array<std::size_t, count> order{};
  for (std::size_t i = 0; i < count; ++i) {
    std::size_t position = i;
    while (position > 0 && keys[i] < keys[order[position - 1]]) {
      order[position] = order[position - 1];
      --position;
    }
    order[position] = i;
  }
  return order;
}

}  // namespace detail

/// Calls `visit(field)` for every field of the record, in ascending order of the keys.
template <JsonRecord Record, class Visitor>
constexpr void forEachSortedField(Visitor&& visit) {
  static constexpr auto order = detail::sortedFieldOrder<Record>();
  [&]<std::size_t... I>(std::index_sequence<I...>) {
    (visit(std::get<order[I]>(JsonFields<Record>::table)), ...);
  }(std::make_index_sequence<order.size()>{});
}

}  // namespace quillo
