#pragma once

#include <optional>
#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Support/Geometry.h"

namespace quillo {

/// How well the elements of a capture account for what the window shows.
namespace AccessibilityAreaCoverage {

/// The share of the window's area, 0 … 1, that lies well away from every element that says what stands there (text,
/// controls, images, lists and tables; not panels and other containers). Estimated on a coarse grid, and cautious: the
/// blank space around elements counts as theirs, and that of a page or a scrolled area as blank, unless a container
/// without content (a canvas) lies there. Nothing when the window has no
/// area, or no element tells where it stands.
std::optional<double> unexplainedShare(const AccessibilitySnapshot& snapshot, const ArtifactRect& windowFrame);

/// A sentence for people when the application told little of its window: only its frame, or nothing about large parts
/// of its area.
std::optional<std::string> warning(const AccessibilitySnapshot& snapshot, const ArtifactRect& windowFrame);

}  // namespace AccessibilityAreaCoverage
}  // namespace quillo
