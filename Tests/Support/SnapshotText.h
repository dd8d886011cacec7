#pragma once

#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo::test {

/// A capture in words, so that a test's expectation and its difference read at a glance. A line for each node in order
/// of the ids, indented by depth, then the truncations, issues and warnings:
///
///     0 AXWindow -> 1 2 AXTitle="Inbox"
///       1 AXButton (0,0,40,20) AXFocused=true
///       2 AXTextField/AXSecureTextField protected AXActions=redacted
///     nodeLimit node 0 omitted 3
///     warning AXFailure node 1 AXTitle: Could not read attribute.
///     ! The target window did not expose AXWindowNumber…
///
/// AXRole, positions and sizes among the attributes are left out.
std::string describe(const AccessibilitySnapshot& snapshot);
std::string describe(const AccessibilityAttributeValue& value);

/// What is wrong with the graph of a captured snapshot; empty when all invariants hold.
std::string findViolation(const AccessibilitySnapshot& snapshot);

}  // namespace quillo::test
