#pragma once

#include <optional>
#include <string>

#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"

namespace quillo {

/// The element that a walk starts from.
struct AccessibilityRoot {
  AccessibilityElement element;
  AccessibilityRootKind kind = AccessibilityRootKind::focusedWindow;
  std::optional<std::string> note;  ///< how the frozen window was recognised, when not by its number
};

/// Finds the frozen window among the application's windows. Throws AccessibilityCaptureError (targetWindowUnavailable)
/// when it cannot be told safely.
AccessibilityRoot selectAccessibilityRoot(AccessibilitySession& session, AccessibilityCaptureState& state,
                                          AccessibilityElement application, const WindowCaptureTarget& target);

}  // namespace quillo
