#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "QuilloCore/Support/JsonReader.h"

namespace quillo {

/// The names of a variant's alternatives, in their order, as an object's "type" gives them.
template <class Variant>
using JsonTags = std::array<std::string_view, std::variant_size_v<Variant>>;

/// Reads the alternative that an object's "type" names by `readPayload.operator()<Alternative>(object)`. Throws
/// JsonError::UnknownName if there is none of that name.
template <class Variant>
Variant readTaggedVariant(const JsonCursor& object, const JsonTags<Variant>& tags, const auto& readPayload) {
  const JsonCursor type = object.require("type");
  const std::string_view name = type.string();
  std::optional<Variant> value;
  const auto readIfNamed = [&]<std::size_t index>() {
    if (tags[index] != name) return false;
    using Alternative = std::variant_alternative_t<index, Variant>;
    value.emplace(std::in_place_index<index>, readPayload.template operator()<Alternative>(object));
    return true;
  };
  const bool isKnown = [&]<std::size_t... I>(std::index_sequence<I...>) {
    return (readIfNamed.template operator()<I>() || ...);
  }(std::make_index_sequence<std::variant_size_v<Variant>>());
  if (!isKnown) throw JsonError(JsonError::UnknownName{type.path(), std::string(name)});
  return *std::move(value);
}

}  // namespace quillo
