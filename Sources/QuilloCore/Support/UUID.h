#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "QuilloCore/Support/JsonReader.h"
#include "QuilloCore/Support/JsonWriter.h"

namespace quillo {

/// A 128-bit identifier (RFC 9562).
struct UUID {
  std::array<std::uint8_t, 16> bytes{};

  /// Canonical text in upper case: 8-4-4-4-12 hexadecimal digits.
  std::string text() const;

  /// Reads exactly the canonical form, in upper or lower case; nothing for any other text.
  static std::optional<UUID> parse(std::string_view text);

  friend auto operator<=>(const UUID&, const UUID&) = default;
};

/// Makes identifiers that are new.
class UUIDGenerating {
 public:
  virtual ~UUIDGenerating() = default;
  virtual UUID makeUUID() = 0;
};

/// Random (version 4) identifiers from the system's entropy source.
class RandomUUIDGenerator final : public UUIDGenerating {
 public:
  UUID makeUUID() override;
};

/// Written in upper case, read in either.
template <>
struct JsonCodec<UUID> {
  static void write(JsonWriter& writer, const UUID& id);
  static UUID read(const JsonCursor& cursor);
};

}  // namespace quillo
