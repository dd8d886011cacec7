#pragma once

#include "QuilloCore/Semantics/InterfaceDraftTree.h"

namespace quillo {

/// Leaves each document text with its outermost owner: the `content` of a document, web area or editor that an owner
/// above covers is removed, and so are empty containers below an owner.
void consolidateAuthoritativeDocumentText(InterfaceDraftTree& tree);

}  // namespace quillo
