#include "QuilloCore/Semantics/AggregateMatching.h"

#include <cstddef>
#include <optional>

namespace quillo {
namespace {

using Text = std::span<const std::uint32_t>;

constexpr std::size_t shortestAnchor = 3;  // words

/// A stretch of the aggregate in which texts are looked for, and where the last one found ends.
struct Window {
  std::size_t begin = 0;
  std::size_t cursor = 0;
  std::size_t end = 0;
};

/// Behind the cursor first, else before it.
std::optional<std::size_t> place(TokenSequenceIndex& aggregate, Text text, Window& window) {
  auto found = aggregate.find(text, window.cursor, window.end);
  if (!found) found = aggregate.find(text, window.begin, window.cursor);
  if (!found) return std::nullopt;
  aggregate.consume(*found, text.size());
  window.cursor = *found + text.size();
  return found;
}

}  // namespace

std::vector<bool> matchInAggregate(TokenSequenceIndex& aggregate, std::span<const Text> texts) {
  std::vector<bool> isFound(texts.size());
  std::vector<std::optional<std::size_t>> anchors(texts.size());
  Window whole{.end = aggregate.size()};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i].size() < shortestAnchor) continue;
    anchors[i] = place(aggregate, texts[i], whole);
    isFound[i] = anchors[i].has_value();
  }
  std::vector<std::size_t> nextAnchor(texts.size() + 1, aggregate.size());
  for (std::size_t i = texts.size(); i-- > 0;) nextAnchor[i] = anchors[i].value_or(nextAnchor[i + 1]);

  Window gap;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (anchors[i]) {
      gap.begin = gap.cursor = *anchors[i] + texts[i].size();
    } else if (!texts[i].empty() && texts[i].size() < shortestAnchor) {
      gap.end = nextAnchor[i] >= gap.cursor ? nextAnchor[i] : aggregate.size();
      isFound[i] = place(aggregate, texts[i], gap).has_value();
    }
  }
  return isFound;
}

}  // namespace quillo
