#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "QuilloCore/Capture/AccessibilityWindowIdentity.h"
#include "QuilloCore/Capture/WindowListProviding.h"

namespace quillo {

/// What the application itself says about its focused window.
using FocusedAccessibilityWindowHint = AccessibilityWindowIdentity;

/// Picks windows from a list that stands front to back.
namespace FrontmostWindowSelector {

/// Whether the window may be frozen when nothing but the order of the windows speaks for it.
bool isFreezable(const WindowListEntry& entry);

/// The process's frontmost window that may be frozen.
std::optional<WindowListEntry> selectFrozenWindow(std::span<const WindowListEntry> entries,
                                                  std::int32_t processIdentifier);

/// The process's window that the hint names: by number, else by frame and title, else by a frame that only one window
/// has, else by dimensions and title that only one window has (an application may count from another origin). When
/// none is named: the frontmost substantial window, else the frontmost one of at least 24 by 24 points.
std::optional<WindowListEntry> selectCaptureableWindow(std::span<const WindowListEntry> entries,
                                                       std::int32_t processIdentifier,
                                                       const std::optional<FocusedAccessibilityWindowHint>& hint);

}  // namespace FrontmostWindowSelector
}  // namespace quillo
