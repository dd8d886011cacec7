#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillo {

/// Gives each distinct text a number that depends only on which texts there are: they are numbered from 0 in the
/// ascending order of their UTF-8 bytes. Refers to the texts that it was made from, which must outlive it.
class TextInterner {
 public:
  explicit TextInterner(const std::vector<std::string_view>& strings);

  /// The number of each of the strings, in the order in which they were given.
  const std::vector<std::int64_t>& ids() const { return ids_; }

  /// Every distinct text, in the order of the numbers.
  const std::vector<std::string_view>& texts() const { return texts_; }

 private:
  std::vector<std::int64_t> ids_;
  std::vector<std::string_view> texts_;
};

}  // namespace quillo
