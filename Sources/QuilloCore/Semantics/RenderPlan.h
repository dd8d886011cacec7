#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "QuilloCore/Semantics/ElementIndexSet.h"
#include "QuilloCore/Semantics/RenderingScope.h"

namespace quillo {

/// What the interface map and the authoritative content print of one observation, decided before a line is written.
/// The coverage section counts its sets. Elements are named by their index. Lives for one render call.
struct RenderPlan {
  RenderPlan(std::size_t elementCount, RenderingScope renderingScope);

  /// Aggregate texts that are emitted as authoritative content.
  ElementIndexSet authoritativeContentIDs;
  /// Aggregate texts that are not emitted, since structured descendants print all their words.
  ElementIndexSet suppressedAggregateContentIDs;
  /// Aggregate texts reduced to the spans that no descendant prints.
  ElementIndexSet partiallyCoveredAggregateContentIDs;
  /// These spans, as text.
  std::unordered_map<ElementIndex, std::string> authoritativeContentOverrides;
  /// Aggregate texts that are part of an enclosing owner's.
  ElementIndexSet suppressedNestedContentIDs;
  /// Texts that the authoritative content of an owner above them holds.
  ElementIndexSet coveredTextElementIDs;
  /// Controls that absorbed the equal label beside them, and these labels.
  ElementIndexSet compoundEditableControlIDs;
  ElementIndexSet suppressedCompoundLabelElementIDs;
  /// Texts of one line, joined, by the element that prints them; the others of the run; and how many runs there are.
  std::unordered_map<ElementIndex, std::string> mergedTextByElementID;
  ElementIndexSet suppressedMergedTextElementIDs;
  std::int64_t mergedTextRunCount = 0;
  /// Rows without any text or state.
  ElementIndexSet emptyTabularRowIDs;
  /// The owners of authoritative content, in source order.
  std::vector<ElementIndex> authoritativeElements;
  /// Web content whose aggregate text also holds navigation that the scope left out.
  ElementIndexSet scopeSuppressedAggregateContentIDs;
  /// What lies in the rendering scope, and what it left out.
  RenderingScope scope;

  /// Elements without a line of their own since another line says all of it: the cells of a row, the text that is a
  /// button's name, a container around a single line.
  ElementIndexSet silentElementIDs;
  /// Names that do not stand whole on their line: empty where the element around has printed them, else without what
  /// the elements inside print.
  std::unordered_map<ElementIndex, std::string> printedNames;
  /// Elements of which the help or the description was told of an element of the same role and name before.
  ElementIndexSet toldHelpIDs;
  ElementIndexSet toldDescriptionIDs;

  /// The name as the element's line has it.
  std::string_view printedName(ElementIndex element, std::string_view primaryText) const;

  /// Whether the element has no line of its own; its children may have.
  bool isSilent(ElementIndex element) const;
};

}  // namespace quillo
