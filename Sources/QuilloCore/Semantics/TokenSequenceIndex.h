#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillo {

/// Finds contiguous word sequences in one long text and notes which of its tokens were found. All searches together
/// take time linear in the text and the sequences: a search that would cost more than its share finds nothing.
class TokenSequenceIndex {
 public:
  explicit TokenSequenceIndex(std::vector<std::uint32_t> words);

  std::size_t size() const { return words_.size(); }

  /// The first place in [from, to) at which the whole sequence stands on tokens not yet consumed.
  std::optional<std::size_t> find(std::span<const std::uint32_t> sequence, std::size_t from, std::size_t to);

  void consume(std::size_t begin, std::size_t length);
  bool isConsumed(std::size_t token) const { return isConsumed_[token]; }
  std::size_t consumedCount() const { return consumedCount_; }

 private:
  /// The places of a word at or behind a position, as entries of `places_`.
  std::span<const std::uint64_t> placesOf(std::uint32_t word, std::size_t from) const;
  bool standsAt(std::span<const std::uint32_t> sequence, std::size_t begin);

  std::vector<std::uint32_t> words_;
  std::vector<std::uint64_t> places_;  // ascending: the word in the upper half, its position in the lower
  std::vector<bool> isConsumed_;
  std::size_t consumedCount_ = 0;
  std::size_t allowedComparisons_;
};

}  // namespace quillo
