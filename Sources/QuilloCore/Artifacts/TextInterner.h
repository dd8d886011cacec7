#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"
#include "QuilloCore/Support/Sha256.h"

namespace quillo {

/// Gives each distinct text a number that depends only on which texts there are: they are numbered from 0 in the
/// ascending order of their UTF-8 bytes. Refers to the texts that it was made from, which must outlive it.
class TextInterner {
 public:
  explicit TextInterner(const std::vector<std::string_view>& strings);

  /// The number of one of the texts.
  std::int64_t id(std::string_view text) const { return ids_.at(text); }

  /// Every distinct text, in the order of the numbers.
  const std::vector<std::string_view>& texts() const { return texts_; }

  /// One of the texts with its digest and lengths.
  CanonicalAccessibilityTextBlob makeBlob(std::size_t number, Sha256Hasher& hasher) const;

 private:
  std::unordered_map<std::string_view, std::int64_t> ids_;
  std::vector<std::string_view> texts_;
};

}  // namespace quillo
