#pragma once

#include <concepts>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// An optional member that most records lack: absent, it takes the room of a pointer and not that of its value.
/// Otherwise a value like a std::optional: it copies, compares and travels as JSON in the same way.
template <class T>
class RareOptional {
 public:
  using value_type = T;

  RareOptional() = default;
  RareOptional(std::nullopt_t) {}  // NOLINT(*-explicit-*): as std::optional
  template <class U = T>
    requires(std::convertible_to<U, T> && !std::same_as<std::remove_cvref_t<U>, RareOptional>)
  RareOptional(U&& value) : value_(std::make_unique<T>(std::forward<U>(value))) {}  // NOLINT(*-explicit-*): the same
  RareOptional(std::optional<T> value) {                                            // NOLINT(*-explicit-*): the same
    if (value) value_ = std::make_unique<T>(*std::move(value));
  }
  RareOptional(const RareOptional& other) {
    if (other) value_ = std::make_unique<T>(*other);
  }
  RareOptional(RareOptional&&) noexcept = default;
  RareOptional& operator=(RareOptional other) noexcept {
    value_ = std::move(other.value_);
    return *this;
  }
  ~RareOptional() = default;

  explicit operator bool() const { return value_ != nullptr; }
  bool has_value() const { return value_ != nullptr; }
  T& operator*() { return *value_; }
  const T& operator*() const { return *value_; }
  T* operator->() { return value_.get(); }
  const T* operator->() const { return value_.get(); }
  T value_or(T fallback) const { return value_ ? *value_ : std::move(fallback); }
  void reset() { value_.reset(); }

  friend bool operator==(const RareOptional& a, const RareOptional& b) {
    return a && b ? *a == *b : a.has_value() == b.has_value();
  }
  template <class U>
    requires(!std::same_as<U, RareOptional> && std::equality_comparable_with<T, U>)
  friend bool operator==(const RareOptional& a, const U& b) {
    return a && *a == b;
  }

 private:
  std::unique_ptr<T> value_;
};

template <class T>
inline constexpr bool detail::isOptional<RareOptional<T>> = true;

}  // namespace quillo
