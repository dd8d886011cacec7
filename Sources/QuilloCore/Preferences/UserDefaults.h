#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// What the program remembers of its user between runs, by key. Reading never fails: what cannot be read is absent.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  virtual std::optional<std::string> data(std::string_view key) const = 0;
  virtual std::optional<std::int64_t> integer(std::string_view key) const = 0;

  /// Throw when the value cannot be kept; the former one is kept then.
  virtual void setData(std::string_view key, std::string_view value) = 0;
  virtual void setInteger(std::string_view key, std::int64_t value) = 0;
};

}  // namespace quillo
