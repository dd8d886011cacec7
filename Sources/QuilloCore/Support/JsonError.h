#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <variant>

namespace quillo {

/// Why a text could not be read as JSON, why JSON could not be read as a record, or why a record has no JSON.
/// Paths name the place: `nodes[3].attributes[0].value`; the outermost value has the path `$`.
class JsonError : public std::exception {
 public:
  struct Malformed {
    std::size_t offset = 0;  ///< byte offset of the first byte that cannot stand there
    std::string reason;
    friend bool operator==(const Malformed&, const Malformed&) = default;
  };
  struct NotUtf8 {
    std::size_t offset = 0;  ///< byte offset of the first malformed sequence
    friend bool operator==(const NotUtf8&, const NotUtf8&) = default;
  };
  struct TooDeep {
    std::size_t offset = 0;  ///< byte offset of the first bracket beyond the limit
    std::size_t limit = 0;   ///< levels of nesting that are read
    friend bool operator==(const TooDeep&, const TooDeep&) = default;
  };
  struct MissingMember {
    std::string path;
    std::string key;
    friend bool operator==(const MissingMember&, const MissingMember&) = default;
  };
  struct WrongType {
    std::string path;
    std::string expected;
    std::string found;
    friend bool operator==(const WrongType&, const WrongType&) = default;
  };
  struct UnknownName {
    std::string path;
    std::string name;
    friend bool operator==(const UnknownName&, const UnknownName&) = default;
  };
  struct InvalidValue {
    std::string path;
    std::string reason;
    friend bool operator==(const InvalidValue&, const InvalidValue&) = default;
  };
  /// A number that JSON cannot express, met while writing.
  struct NotFinite {
    friend bool operator==(const NotFinite&, const NotFinite&) = default;
  };
  using Case =
      std::variant<Malformed, NotUtf8, TooDeep, MissingMember, WrongType, UnknownName, InvalidValue, NotFinite>;

  // Not explicit: an error is thrown by naming its case.
  JsonError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const JsonError& a, const JsonError& b) { return a.value_ == b.value_; }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
