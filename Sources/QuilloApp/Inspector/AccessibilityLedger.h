#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Semantics/InterfaceObservation.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// The captured accessibility context as lines of a tree: one line for each captured element, numbered in the
/// observation's order. It holds for any observation that could be decoded, however deep or wrong: an element whose
/// parent does not stand before it is a line of the outermost level. Immutable once made, so that it can be made on any
/// thread.
class AccessibilityLedger {
 public:
  /// What is nested deeper is shown at this level, one line after the other: no window could indent it.
  static constexpr std::int32_t deepestLevel = 40;

  struct Line {
    const InterfaceElement* element = nullptr;
    std::int32_t parent = -1;           ///< the line that it is shown under; -1 at the outermost level
    std::int32_t row = 0;               ///< among the lines that are shown under the same line
    std::int32_t depth = 0;             ///< of the element in what was captured; the shown level may be less
    std::string value;                  ///< beside the name, in words; whole
    std::optional<ArtifactRect> frame;  ///< in screen points; only a finite one with an area
    bool isInClosedMenu = false;        ///< or in a list that drops down; then it is out of sight
  };

  explicit AccessibilityLedger(std::shared_ptr<const InterfaceObservation> observation);

  std::size_t size() const { return lines_.size(); }
  const Line& line(std::int32_t number) const { return lines_[static_cast<std::size_t>(number)]; }
  /// The lines under a line, in order; those of the outermost level for -1.
  std::span<const std::int32_t> children(std::int32_t number) const;

  /// What names the element; empty without one.
  std::string_view name(std::int32_t number) const;

  /// The smallest of the lines that show something there; of equally small ones the last.
  std::optional<std::int32_t> lineAt(const ArtifactPoint& point) const;

  /// The lines that hold every word of `query` in role, name, value or detail, without regard to case, ascending. None
  /// for a query without words.
  std::vector<std::int32_t> linesMatching(std::string_view query) const;

  /// The element's own text as it was captured: its value, else its name. Nothing of a protected one.
  std::string text(std::int32_t number) const;
  /// The line and all below it, one line of text each, indented by their level.
  std::string branchText(std::int32_t number) const;

 private:
  std::shared_ptr<const InterfaceObservation> observation_;
  std::vector<Line> lines_;
  std::vector<std::size_t> firstChild_;  ///< by line + 1, into `children_`; one entry more than there are parents
  std::vector<std::int32_t> children_;
  std::vector<std::string> searchKeys_;  ///< by line, lower-cased
};

/// What the element holds beside its name: its content, its text or what it is set to. Empty when the name says it all,
/// or when the element is protected.
std::string ledgerValue(const InterfaceElement& element);

/// "button “Reply”: value", on one line.
std::string ledgerLineText(const InterfaceElement& element, std::string_view value);

}  // namespace quillo
