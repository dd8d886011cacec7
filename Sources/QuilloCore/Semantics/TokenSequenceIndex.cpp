#include "QuilloCore/Semantics/TokenSequenceIndex.h"

#include <algorithm>
#include <utility>

namespace quillo {
namespace {

/// Comparisons for every token of the text and of the sequences. Real windows need fewer than two.
constexpr std::size_t comparisonsPerToken = 32;

std::uint64_t entry(std::uint32_t word, std::size_t position) {
  return (std::uint64_t{word} << 32U) | position;
}

}  // namespace

TokenSequenceIndex::TokenSequenceIndex(std::vector<std::uint32_t> words)
    : words_(std::move(words)), isConsumed_(words_.size()), allowedComparisons_(words_.size() * comparisonsPerToken) {
  places_.reserve(words_.size());
  for (std::size_t i = 0; i < words_.size(); ++i) places_.push_back(entry(words_[i], i));
  std::ranges::sort(places_);
}

std::span<const std::uint64_t> TokenSequenceIndex::placesOf(std::uint32_t word, std::size_t from) const {
  const auto first = std::ranges::lower_bound(places_, entry(word, from));
  const auto last = std::ranges::upper_bound(first, places_.end(), entry(word, UINT32_MAX));
  return {first, last};
}

bool TokenSequenceIndex::standsAt(std::span<const std::uint32_t> sequence, std::size_t begin) {
  for (std::size_t i = 0; i < sequence.size(); ++i) {
    if (allowedComparisons_ > 0) --allowedComparisons_;
    if (words_[begin + i] != sequence[i] || isConsumed_[begin + i]) return false;
  }
  return true;
}

std::optional<std::size_t> TokenSequenceIndex::find(std::span<const std::uint32_t> sequence, std::size_t from,
                                                    std::size_t to) {
  if (sequence.empty() || from >= to || sequence.size() > to - from) return std::nullopt;
  allowedComparisons_ += sequence.size() * comparisonsPerToken;
  // Search by the sequence's rarest word.
  std::size_t rarest = 0;
  auto places = placesOf(sequence[0], from);
  for (std::size_t i = 1; i < sequence.size(); ++i) {
    if (const auto others = placesOf(sequence[i], from + i); others.size() < places.size()) {
      rarest = i;
      places = others;
    }
  }
  for (const std::uint64_t place : places) {
    const std::size_t begin = static_cast<std::uint32_t>(place) - rarest;
    if (begin + sequence.size() > to || allowedComparisons_ == 0) break;
    if (standsAt(sequence, begin)) return begin;
  }
  return std::nullopt;
}

void TokenSequenceIndex::consume(std::size_t begin, std::size_t length) {
  for (std::size_t i = begin; i < begin + length; ++i) {
    if (!isConsumed_[i]) ++consumedCount_;
    isConsumed_[i] = true;
  }
}

}  // namespace quillo
