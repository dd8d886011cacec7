#pragma once

#include "QuilloCore/Capture/AccessibilitySnapshot.h"
#include "QuilloCore/Semantics/InterfaceObservation.h"

namespace quillo {

struct InterfaceNormalizationOptions {
  bool synthesizeApplicationRoot = true;  ///< put the retained top-level elements under a synthetic application
  bool inferConservativeActions = true;   ///< give an element without listed actions those of its role

  friend bool operator==(const InterfaceNormalizationOptions&, const InterfaceNormalizationOptions&) = default;
};

template <>
struct JsonFields<InterfaceNormalizationOptions> {
  using R = InterfaceNormalizationOptions;
  static constexpr auto table = std::tuple{jsonField("synthesizeApplicationRoot", &R::synthesizeApplicationRoot),
                                           jsonField("inferConservativeActions", &R::inferConservativeActions)};
};

/// Turns a raw snapshot into the semantic observation of it.
namespace AccessibilitySemanticNormalizer {

/// Pure; cannot fail, whatever graph the snapshot's references form.
InterfaceObservation normalize(const AccessibilitySnapshot& snapshot, InterfaceNormalizationOptions options);

}  // namespace AccessibilitySemanticNormalizer
}  // namespace quillo
