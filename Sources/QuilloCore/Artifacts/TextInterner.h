#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Artifacts/CanonicalAccessibilityEvidence.h"

namespace quillo {

/// Gives each distinct text a number that depends only on which texts there are: they are numbered from 0 in the
/// ascending order of their UTF-8 bytes. Refers to the texts that it was made from, which must outlive it.
class TextInterner {
 public:
  explicit TextInterner(const std::vector<std::string_view>& strings);

  /// The number of one of the texts.
  std::int64_t id(std::string_view text) const { return ids_.at(text); }

  /// Every distinct text with its digest and lengths, in the order of the numbers.
  std::vector<CanonicalAccessibilityTextBlob> makeBlobs() const;

 private:
  std::unordered_map<std::string_view, std::int64_t> ids_;
  std::vector<std::string_view> texts_;
};

}  // namespace quillo
