#pragma once

#include <memory>
#include <optional>
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
  RareOptional(std::nullopt_t) {}                                           // NOLINT(*-explicit-*): as std::optional
  RareOptional(T value) : value_(std::make_unique<T>(std::move(value))) {}  // NOLINT(*-explicit-*): as std::optional
  RareOptional(std::optional<T> value) {                                    // NOLINT(*-explicit-*): as std::optional
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
  void reset() { value_.reset(); }

  friend bool operator==(const RareOptional& a, const RareOptional& b) {
    return a && b ? *a == *b : a.has_value() == b.has_value();
  }

 private:
  std::unique_ptr<T> value_;
};

template <class T>
inline constexpr bool detail::isOptional<RareOptional<T>> = true;

}  // namespace quillo
