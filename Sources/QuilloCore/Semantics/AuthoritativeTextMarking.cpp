#include "QuilloCore/Semantics/AuthoritativeTextMarking.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "QuilloCore/Support/Utf16.h"

namespace quillo {
namespace {

enum class TextMarker : std::uint8_t { visible, selected };  // in the order of opening

struct MarkedRange {
  TextMarker marker;
  std::int64_t location;  // UTF-16 code units
  std::int64_t end;       // exclusive
};

std::string_view openingToken(TextMarker marker) {
  return marker == TextMarker::visible ? "⟦visible⟧" : "⟦selected⟧";
}
std::string_view closingToken(TextMarker marker) {
  return marker == TextMarker::visible ? "⟦/visible⟧" : "⟦/selected⟧";
}

/// Whether the range lies in a text of that length; written so that no sum can overflow.
bool isWithin(const ArtifactTextRange& range, std::int64_t length) {
  return range.location >= 0 && range.length >= 0 && range.location <= length &&
         range.length <= length - range.location;
}

class Marking {
 public:
  Marking(std::string_view text, const std::optional<ArtifactTextRange>& selected,
          const std::optional<ArtifactTextRange>& visible)
      : units_(text) {
    const std::int64_t length = units_.length();
    if (visible && visible->length >= 1 && visible->length < length && isWithin(*visible, length)) {
      ranges_.push_back({TextMarker::visible, visible->location, visible->location + visible->length});
    }
    if (!selected || !isWithin(*selected, length)) return;
    if (selected->length == 0) {
      caret_ = selected->location;
    } else {
      ranges_.push_back({TextMarker::selected, selected->location, selected->location + selected->length});
    }
  }

  std::vector<MarkedTextPiece> run() {
    const std::vector<std::int64_t> boundaries = sortedBoundaries();
    for (std::size_t i = 0; i < boundaries.size(); ++i) {
      const std::int64_t boundary = boundaries[i];
      switchTo(activeAt(boundary));
      if (boundary == caret_) addMarker("⟦caret⟧");
      const std::int64_t next = i + 1 < boundaries.size() ? boundaries[i + 1] : boundary;
      if (const std::string_view text = units_.substring(boundary, next); !text.empty())
        pieces_.push_back({text, false});
    }
    switchTo({});
    return std::move(pieces_);
  }

 private:
  std::vector<std::int64_t> sortedBoundaries() const {
    std::vector<std::int64_t> boundaries = {0, units_.length()};
    for (const MarkedRange& range : ranges_) {
      boundaries.push_back(range.location);
      boundaries.push_back(range.end);
    }
    if (caret_) boundaries.push_back(*caret_);
    std::ranges::sort(boundaries);
    const auto repeated = std::ranges::unique(boundaries);
    boundaries.erase(repeated.begin(), repeated.end());
    return boundaries;
  }

  /// The ranges were entered in the order of their markers.
  std::vector<TextMarker> activeAt(std::int64_t boundary) const {
    std::vector<TextMarker> active;
    for (const MarkedRange& range : ranges_) {
      if (range.location <= boundary && boundary < range.end) active.push_back(range.marker);
    }
    return active;
  }

  /// Closes and opens markers so that those of `active` are open, leaving alone what both have in common.
  void switchTo(const std::vector<TextMarker>& active) {
    const auto common = static_cast<std::size_t>(std::ranges::mismatch(open_, active).in1 - open_.begin());
    for (std::size_t i = open_.size(); i > common; --i) addMarker(closingToken(open_[i - 1]));
    for (std::size_t i = common; i < active.size(); ++i) addMarker(openingToken(active[i]));
    open_ = active;
  }

  void addMarker(std::string_view token) { pieces_.push_back({token, true}); }

  Utf16Index units_;
  std::vector<MarkedRange> ranges_;
  std::optional<std::int64_t> caret_;
  std::vector<TextMarker> open_;
  std::vector<MarkedTextPiece> pieces_;
};

}  // namespace

std::vector<MarkedTextPiece> markAuthoritativeText(std::string_view text,
                                                   const std::optional<ArtifactTextRange>& selectedRange,
                                                   const std::optional<ArtifactTextRange>& visibleRange) {
  return Marking(text, selectedRange, visibleRange).run();
}

bool hasMarkers(const std::vector<MarkedTextPiece>& pieces) {
  return std::ranges::any_of(pieces, &MarkedTextPiece::isMarker);
}

}  // namespace quillo
