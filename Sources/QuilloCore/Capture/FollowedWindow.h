#pragma once

#include "QuilloCore/Capture/WindowCaptureTarget.h"
#include "QuilloCore/Capture/WindowListProviding.h"

namespace quillo {

/// The frozen window where it stands by now: with its present frame, and the frozen one among the equivalent frames,
/// because its program may not have heard yet. As it was frozen when the list cannot be read or it is not in it.
/// Accessibility windows here have no numbers and are known by their frames; so a window that is moved or resized after
/// it was frozen is found only where it stands.
WindowCaptureTarget followWindow(const WindowCaptureTarget& frozen, WindowListProviding& windowList);

}  // namespace quillo
