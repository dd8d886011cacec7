#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// The user's settings: a small store of JSON values by key that outlives the program and that other programs of ours
/// may change at any time. Used by one thread.
///
/// Reading never throws and never writes: what is absent, of another type or not readable at all is nothing. Writing
/// keeps the values of all other keys, and throws the store's error when the value could not be stored.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The JSON text of the value, whatever its type; equal in meaning to what was stored, perhaps spaced otherwise.
  virtual std::optional<std::string> data(std::string_view key) const = 0;
  /// Throws JsonError when the data are not one JSON text.
  virtual void setData(std::string_view key, std::string_view json) = 0;

  virtual void remove(std::string_view key) = 0;

  std::optional<std::int64_t> integer(std::string_view key) const;
  void setInteger(std::string_view key, std::int64_t value);

  std::optional<std::string> string(std::string_view key) const;
  /// The text must be UTF-8.
  void setString(std::string_view key, std::string_view value);
};

}  // namespace quillo
