#include "QuilloCore/Support/Sha256.h"

#include <openssl/evp.h>

#include <new>
#include <stdexcept>

namespace quillo {
namespace {

struct FreeDigest {
  void operator()(EVP_MD* digest) const { EVP_MD_free(digest); }
};
struct FreeContext {
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

const EVP_MD* sha256() {
  static const std::unique_ptr<EVP_MD, FreeDigest> digest(EVP_MD_fetch(nullptr, "SHA256", nullptr));
  if (!digest) throw std::runtime_error("SHA-256 is not available.");
  return digest.get();
}

}  // namespace

struct Sha256Hasher::Context {
  std::unique_ptr<EVP_MD_CTX, FreeContext> value{EVP_MD_CTX_new()};
};

std::array<char, 64> hexadecimalDigits(const Sha256Digest& digest) {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::array<char, 64> text{};
  char* digit = text.data();
  for (const std::uint8_t byte : digest) {
    *digit++ = digits[byte >> 4U];
    *digit++ = digits[byte & 0xFU];
  }
  return text;
}

std::string hexadecimalText(const Sha256Digest& digest) {
  const auto digits = hexadecimalDigits(digest);
  return {digits.data(), digits.size()};
}

Sha256Hasher::Sha256Hasher() : context_(std::make_unique<Context>()) {
  if (!context_->value) throw std::bad_alloc();
}
Sha256Hasher::Sha256Hasher(Sha256Hasher&&) noexcept = default;
Sha256Hasher& Sha256Hasher::operator=(Sha256Hasher&&) noexcept = default;
Sha256Hasher::~Sha256Hasher() = default;

Sha256Digest Sha256Hasher::digest(std::string_view bytes) {
  EVP_MD_CTX* const context = context_->value.get();
  Sha256Digest result{};
  const bool isDone = EVP_DigestInit_ex2(context, sha256(), nullptr) == 1 &&
                      EVP_DigestUpdate(context, bytes.data(), bytes.size()) == 1 &&
                      EVP_DigestFinal_ex(context, result.data(), nullptr) == 1;
  if (!isDone) throw std::runtime_error("SHA-256 could not be computed.");
  return result;
}

}  // namespace quillo
