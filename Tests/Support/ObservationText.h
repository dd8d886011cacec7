#pragma once

#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo::test {

/// An observation in words, so that a test's expectation and its difference read at a glance. A line for each element,
/// indented by depth, with the id of its node:
///
///     - application
///       0 window "Inbox"
///         1 button "Reply" focused !enabled {press? showMenu}
///         2 textArea content="Dear all" value="Dear" selectedTextRange=0+4 #dom:editor
///
/// An inferred action ends in "?"; a false state begins with "!"; "visible" and "unknown" visibility is left out, and
/// so are frames and the raw role.
std::string describe(const InterfaceObservation& observation);
std::string describe(const InterfaceElement& element);

/// Which invariant of an observation is broken, in words; empty when all five hold.
std::string findViolation(const InterfaceObservation& observation);

/// The same, or what in an observation of that snapshot does not follow from it: elements stand in the order in which a
/// walk down from the root first meets their nodes, below the nearest ancestor that is an element; every reference is
/// followed or counted; protected nodes keep no text; no node but the known one is focused.
std::string findViolation(const InterfaceObservation& observation, const AccessibilitySnapshot& snapshot);

}  // namespace quillo::test
