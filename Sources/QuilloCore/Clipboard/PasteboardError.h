#pragma once

#include <exception>
#include <optional>
#include <string>
#include <variant>

namespace quillo {

/// Why the platform's clipboard is out of reach.
class PasteboardError : public std::exception {
 public:
  /// There is no display to connect to.
  struct DisplayUnavailable {
    friend bool operator==(const DisplayUnavailable&, const DisplayUnavailable&) = default;
  };
  /// The display has gone away.
  struct DisplayLost {
    friend bool operator==(const DisplayLost&, const DisplayLost&) = default;
  };
  /// The display lacks something that cannot be done without.
  struct MissingExtension {
    std::string name;
    friend bool operator==(const MissingExtension&, const MissingExtension&) = default;
  };
  using Case = std::variant<DisplayUnavailable, DisplayLost, MissingExtension>;

  // Not explicit: an error is thrown by naming its case.
  PasteboardError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  std::optional<std::string> recoverySuggestion() const;
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const PasteboardError& a, const PasteboardError& b) { return a.value_ == b.value_; }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
