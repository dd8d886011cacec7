#pragma once

#include <string_view>

#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo::test {

/// An observation from the notation of trees (TreeNotation.h). A line's kind is a semantic role, its title the label
/// (of a `text` its string value). Elements get the ids element-0, element-1 … in pre-order, unless `id=` says
/// otherwise; what the invariants of an observation determine is filled in.
///
/// Flags: disabled focused selected expanded collapsed checked unchecked mixed required modal visited busy invalid
/// edited; visible offscreen hidden; protected.
///
/// Fields: value (text), integer, number, boolean, redacted; label content description help placeholder raw
/// (accessibilityRole) roleDescription valueDescription level (heading) disclosure index; actions inferred identifiers
/// (separated by commas); cells headers (separated by '|'); bounds='x y width height'; selection and shown (ranges
/// 'location length'); children (further child ids, separated by commas).
InterfaceObservation observation(std::string_view notation);

}  // namespace quillo::test
