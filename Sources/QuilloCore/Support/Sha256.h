#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quillo {

using Sha256Digest = std::array<std::uint8_t, 32>;

/// 64 lower-case hexadecimal digits.
std::array<char, 64> hexadecimalDigits(const Sha256Digest& digest);
std::string hexadecimalText(const Sha256Digest& digest);

/// Computes SHA-256 digests one after the other; reuses its context, because setting one up costs more than a short
/// text. Not for use by two threads at once.
class Sha256Hasher {
 public:
  Sha256Hasher();
  Sha256Hasher(Sha256Hasher&&) noexcept;
  Sha256Hasher& operator=(Sha256Hasher&&) noexcept;
  ~Sha256Hasher();

  Sha256Digest digest(std::string_view bytes);

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

}  // namespace quillo
