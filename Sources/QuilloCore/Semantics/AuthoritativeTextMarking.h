#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// A stretch of captured text, or a marker that was put between.
struct MarkedTextPiece {
  std::string_view text;
  bool isMarker = false;

  friend bool operator==(const MarkedTextPiece&, const MarkedTextPiece&) = default;
};

/// The text cut at the ends of its selected and visible ranges, with ⟦selected⟧ … ⟦/selected⟧, ⟦visible⟧ … ⟦/visible⟧
/// or ⟦caret⟧ between; an invalid range, and a visible one that is the whole text, yields no marker. Ranges count
/// UTF-16 code units; one that would split a surrogate pair is moved to its start. The pieces refer to `text`.
std::vector<MarkedTextPiece> markAuthoritativeText(std::string_view text,
                                                   const std::optional<ArtifactTextRange>& selectedRange,
                                                   const std::optional<ArtifactTextRange>& visibleRange);

bool hasMarkers(const std::vector<MarkedTextPiece>& pieces);

}  // namespace quillo
