#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillo {

/// Number of UTF-16 code units that a well-formed UTF-8 text has.
std::int64_t utf16Length(std::string_view text);

/// Translates between UTF-16 code units and byte offsets of one UTF-8 text, in time independent of its length after a
/// linear construction. The text must be well-formed and outlive the index.
class Utf16Index {
 public:
  explicit Utf16Index(std::string_view text);

  std::int64_t length() const { return length_; }

  /// The byte offset of the code point that holds the given unit (an offset inside a surrogate pair is moved down to
  /// its start); the text's size for `length()`. Offsets outside [0, length()] are clamped.
  std::size_t byteOffset(std::int64_t utf16Offset) const;

  /// The inverse: units before the given byte offset.
  std::int64_t utf16Offset(std::size_t byteOffset) const;

  /// The bytes between two UTF-16 offsets.
  std::string_view substring(std::int64_t begin, std::int64_t end) const;

 private:
  struct Checkpoint {
    std::int64_t utf16Offset;
    std::size_t byteOffset;
  };

  std::string_view text_;
  std::int64_t length_ = 0;
  bool isAscii_ = true;
  std::vector<Checkpoint> checkpoints_;  // every few hundred bytes, at code point boundaries
};

/// The longest prefix with at most `maximumUnits` UTF-16 code units; never splits a surrogate pair.
std::string_view utf16Prefix(std::string_view text, std::int64_t maximumUnits);

}  // namespace quillo
