#pragma once

#include <functional>
#include <string>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

/// What the library derives from a stored capture when it is read: the observation, if the stored one is missing or of
/// an older version, and the text. Pure functions, injected so that storage is testable by itself.
struct ArtifactProjection {
  std::function<InterfaceObservation(const AccessibilitySnapshot&)> makeObservation;
  std::function<std::string(const InterfaceObservation&)> renderContextText;

  /// The normalizer with its default options, and the renderer.
  static ArtifactProjection standard();
};

}  // namespace quillo
