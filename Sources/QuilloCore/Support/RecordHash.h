#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <variant>
#include <vector>

#include "QuilloCore/Support/JsonFields.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// Hashes records over all their fields, as their field tables name them, for unordered containers. Equal records have
/// equal hashes.
struct RecordHash {
  template <class T>
  std::size_t operator()(const T& value) const {
    if constexpr (JsonRecord<T>) {
      std::size_t hash = 0;
      forEachSortedField<T>([&](const auto& field) { hash = combined(hash, (*this)(value.*field.member)); });
      return hash;
    } else if constexpr (detail::isOptional<T>) {
      return value ? combined(1, (*this)(*value)) : 0;
    } else if constexpr (std::is_empty_v<T>) {
      return 0;
    } else {
      return std::hash<T>{}(value);
    }
  }

  template <class T>
  std::size_t operator()(const std::vector<T>& values) const {
    std::size_t hash = values.size();
    for (const T& value : values) hash = combined(hash, (*this)(value));
    return hash;
  }

  template <class... Alternatives>
  std::size_t operator()(const std::variant<Alternatives...>& value) const {
    return combined(value.index(), std::visit(*this, value));
  }

  template <class Clock, class Duration>
  std::size_t operator()(const std::chrono::time_point<Clock, Duration>& moment) const {
    return (*this)(moment.time_since_epoch().count());
  }

 private:
  static std::size_t combined(std::size_t hash, std::size_t more) {
    constexpr std::size_t mixer = 0x9E3779B97F4A7C15;
    return hash * mixer + more;
  }
};

}  // namespace quillo
