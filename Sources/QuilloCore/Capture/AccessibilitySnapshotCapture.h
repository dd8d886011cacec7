#pragma once

#include <memory>

#include "QuilloCore/Capture/AccessibilityCaptureConfiguration.h"
#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Support/Clocks.h"

namespace quillo {

using SharedAccessibilityCaptureControl = std::shared_ptr<const AccessibilityCaptureControl>;

/// Reads the frozen window on the calling thread, within the limits of a clamped configuration. What could not be read,
/// and what the limits cut, stands in the snapshot. Throws AccessibilityCaptureError, or OperationCancelled when the
/// control was cancelled.
AccessibilitySnapshot captureAccessibilitySnapshot(AccessibilityInterface& interface, WallClock& wallClock,
                                                   const AccessibilityCaptureConfiguration& configuration,
                                                   const WindowCaptureTarget& target,
                                                   const SharedAccessibilityCaptureControl& control);

}  // namespace quillo
