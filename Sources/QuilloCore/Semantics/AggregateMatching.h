#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "QuilloCore/Semantics/TokenSequenceIndex.h"

namespace quillo {

/// Finds the texts of descendants, given in source order as word sequences, in an aggregate text; what is found is
/// consumed there. Returns for each text whether it was found.
///
/// Texts of three words and more are placed first, each at its first free place behind the one before it, else before
/// that. The shorter ones, which may stand anywhere by chance, are then looked for only between the places of the
/// longer texts around them.
std::vector<bool> matchInAggregate(TokenSequenceIndex& aggregate,
                                   std::span<const std::span<const std::uint32_t>> texts);

}  // namespace quillo
