#pragma once

#include <cstdint>
#include <vector>

#include "QuilloCore/Semantics/ElementForest.h"
#include "QuilloCore/Semantics/ElementIndexSet.h"

namespace quillo {

/// What the text is about: the whole tree, or, when the focus lies in exactly one web content, that content and the
/// elements around it on the way to the root.
struct RenderingScope {
  ElementIndexSet includedElements;
  std::int64_t omittedOutOfScopeElementCount = 0;
  std::int64_t omittedNavigationElementCount = 0;
  std::vector<ElementIndex> omittedNavigationElements;
};

/// A missing root yields an empty scope.
RenderingScope computeRenderingScope(const ElementForest& forest);

}  // namespace quillo
