#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Support/Geometry.h"
#include "QuilloLinux/Accessibility/AtspiNodeRecord.h"
#include "QuilloLinux/Accessibility/AtspiWindowPlacement.h"

namespace quillo {

/// An accessible object in the terms of the capture.
struct AtspiMappedElement {
  std::vector<std::pair<std::string, AccessibilityValue>>
      attributes;                       ///< what the element advertises, but its children
  std::optional<std::string> fullText;  ///< what AXStringForRange reads from; only with AXNumberOfCharacters
  std::vector<std::string> actions;

  const AccessibilityValue* attribute(std::string_view name) const;
  std::optional<ArtifactRect> frame() const;
};

/// Pure.
AtspiMappedElement mapElement(const AtspiNodeRecord& record, AtspiToolkit toolkit,
                              const AtspiWindowPlacement& placement);

}  // namespace quillo
