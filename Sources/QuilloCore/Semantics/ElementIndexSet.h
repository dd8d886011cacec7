#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillo {

/// An element's position in the observation's `elements`.
using ElementIndex = std::uint32_t;

inline constexpr ElementIndex noElement = UINT32_MAX;

/// A set of an observation's elements.
class ElementIndexSet {
 public:
  explicit ElementIndexSet(std::size_t elementCount = 0) : isMember_(elementCount) {}

  /// Whether the element was new.
  bool insert(ElementIndex element) {
    if (isMember_[element]) return false;
    isMember_[element] = true;
    ++size_;
    return true;
  }

  bool contains(ElementIndex element) const { return isMember_[element]; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

 private:
  std::vector<bool> isMember_;
  std::size_t size_ = 0;
};

}  // namespace quillo
