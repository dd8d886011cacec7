#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "QuilloCore/Capture/AccessibilityWindowMatcher.h"
#include "QuilloCore/Capture/WindowCaptureTarget.h"

namespace quillo {

/// No toolkit here tells the display's number of its windows, and several windows of one application may stand in the
/// frozen window's place: maximised ones, or those of a toolkit that knows only their sizes. Then the one that alone
/// bears the frozen title is the frozen one. Nothing when the place alone tells them apart, or the title does not.
std::optional<std::size_t> recognizeByTitle(std::span<const AccessibilityWindowCandidate> windows,
                                            const WindowCaptureTarget& target);

}  // namespace quillo
