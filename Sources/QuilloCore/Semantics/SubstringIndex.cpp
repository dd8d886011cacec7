#include "QuilloCore/Semantics/SubstringIndex.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <ranges>
#include <utility>

namespace quillo {
namespace {

/// Sorting the suffixes costs about as much as this many searches of the whole text.
constexpr int maximumFullSearches = 64;
constexpr std::size_t shortWindow = 1024;

using Symbols = std::vector<std::int32_t>;

/// Sorts suffixes by induction: those of the leftmost descending kind are sorted first (recursively, as a text of half
/// the length at most), and all others follow from their order in two passes.
class InducedSorting {
 public:
  InducedSorting(const Symbols& symbols, std::int32_t symbolCount)
      : symbols_(symbols), isSmaller_(symbols.size() + 1), bucketEnds_(static_cast<std::size_t>(symbolCount)) {
    // A suffix is of the smaller kind when it sorts before its successor; the empty one at the end is.
    isSmaller_[size()] = true;
    for (std::size_t i = size() - 1; i-- > 0;) {
      isSmaller_[i] = symbols_[i] < symbols_[i + 1] || (symbols_[i] == symbols_[i + 1] && isSmaller_[i + 1]);
    }
    for (const std::int32_t symbol : symbols_) ++bucketEnds_[static_cast<std::size_t>(symbol)];
    std::int32_t sum = 0;
    for (std::int32_t& end : bucketEnds_) end = sum += end;
  }

  std::vector<std::int32_t> sort() {
    std::vector<std::int32_t> starts;
    for (std::size_t i = 1; i < size(); ++i) {
      if (isStart(i)) starts.push_back(static_cast<std::int32_t>(i));
    }
    std::vector<std::int32_t> order = induce(starts);
    if (starts.empty()) return order;

    // The induced order sorts the pieces between starts; equal pieces get one name.
    std::vector<std::int32_t> names(size(), -1);
    std::int32_t nameCount = 0;
    std::size_t previous = size();
    for (const std::int32_t suffix : order) {
      const auto start = static_cast<std::size_t>(suffix);
      if (start == 0 || !isStart(start)) continue;
      if (previous == size() || !isSamePiece(previous, start)) ++nameCount;
      names[start] = nameCount - 1;
      previous = start;
    }
    Symbols reduced;
    reduced.reserve(starts.size());
    for (const std::int32_t start : starts) reduced.push_back(names[static_cast<std::size_t>(start)]);

    std::vector<std::int32_t> reducedOrder(starts.size());
    if (nameCount < std::ssize(starts)) {
      reducedOrder = InducedSorting(reduced, nameCount).sort();
    } else {
      for (std::size_t i = 0; i < reduced.size(); ++i) {
        reducedOrder[static_cast<std::size_t>(reduced[i])] = static_cast<std::int32_t>(i);
      }
    }
    for (std::int32_t& index : reducedOrder) index = starts[static_cast<std::size_t>(index)];
    return induce(reducedOrder);
  }

 private:
  std::size_t size() const { return symbols_.size(); }
  bool isStart(std::size_t i) const { return isSmaller_[i] && !isSmaller_[i - 1]; }

  std::int32_t bucketStart(std::int32_t symbol) const {
    return symbol == 0 ? 0 : bucketEnds_[static_cast<std::size_t>(symbol) - 1];
  }

  bool isSamePiece(std::size_t a, std::size_t b) const {
    for (std::size_t i = 0;; ++i) {
      if (a + i >= size() || b + i >= size()) return false;
      if (symbols_[a + i] != symbols_[b + i]) return false;
      if (i == 0) continue;
      const bool endsA = isStart(a + i);
      const bool endsB = isStart(b + i);
      if (endsA && endsB) return true;
      if (endsA != endsB) return false;
    }
  }

  /// The order of all suffixes that follows from the given order of the starts.
  std::vector<std::int32_t> induce(const std::vector<std::int32_t>& starts) const {
    std::vector<std::int32_t> order(size(), -1);
    std::vector<std::int32_t> next = bucketEnds_;
    const auto symbolAt = [&](std::int32_t i) {
      return static_cast<std::size_t>(symbols_[static_cast<std::size_t>(i)]);
    };
    for (const std::int32_t start : starts | std::views::reverse) {
      order[static_cast<std::size_t>(--next[symbolAt(start)])] = start;
    }

    for (std::size_t symbol = 0; symbol < next.size(); ++symbol) {
      next[symbol] = bucketStart(static_cast<std::int32_t>(symbol));
    }
    const auto placeLarger = [&](std::int32_t suffix) {
      order[static_cast<std::size_t>(next[symbolAt(suffix)]++)] = suffix;
    };
    placeLarger(static_cast<std::int32_t>(size()) - 1);
    for (std::size_t i = 0; i < size(); ++i) {
      const std::int32_t before = order[i] - 1;
      if (before >= 0 && !isSmaller_[static_cast<std::size_t>(before)]) placeLarger(before);
    }

    next = bucketEnds_;
    for (std::size_t i = size(); i-- > 0;) {
      const std::int32_t before = order[i] - 1;
      if (before < 0 || !isSmaller_[static_cast<std::size_t>(before)]) continue;
      order[static_cast<std::size_t>(--next[symbolAt(before)])] = before;
    }
    return order;
  }

  const Symbols& symbols_;
  std::vector<bool> isSmaller_;
  std::vector<std::int32_t> bucketEnds_;
};

}  // namespace

std::size_t findSubstring(std::string_view text, std::string_view sought, std::size_t from) {
  if (from > text.size()) return std::string_view::npos;
  const void* found = ::memmem(text.data() + from, text.size() - from, sought.data(), sought.size());
  return found == nullptr ? std::string_view::npos
                          : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

std::vector<std::int32_t> sortSuffixes(std::string_view text) {
  if (text.empty()) return {};
  Symbols symbols;
  symbols.reserve(text.size());
  for (const char c : text) symbols.push_back(static_cast<unsigned char>(c));
  return InducedSorting(symbols, std::numeric_limits<unsigned char>::max() + 1).sort();
}

bool SubstringIndex::contains(std::string_view sought) {
  if (sought.size() > text_.size()) return false;
  const std::string_view text = text_;
  const std::string_view window = text.substr(cursor_, sought.size() + shortWindow);
  if (const std::size_t found = findSubstring(window, sought); found != std::string_view::npos) {
    cursor_ += found;
    return true;
  }
  const bool isSortable = text.size() <= std::numeric_limits<std::int32_t>::max();
  if (fullSearches_ < maximumFullSearches || !isSortable) {
    ++fullSearches_;
    const std::size_t found = findSubstring(text, sought);
    if (found == std::string_view::npos) return false;
    cursor_ = found;
    return true;
  }
  if (suffixes_.empty()) suffixes_ = sortSuffixes(text);
  return containsSuffixBeginning(sought);
}

bool SubstringIndex::containsSuffixBeginning(std::string_view sought) const {
  const std::string_view text = text_;
  const auto found = std::ranges::lower_bound(suffixes_, sought, {}, [&](std::int32_t suffix) {
    return text.substr(static_cast<std::size_t>(suffix), sought.size());
  });
  return found != suffixes_.end() && text.substr(static_cast<std::size_t>(*found)).starts_with(sought);
}

}  // namespace quillo
