#pragma once

#include <memory>

#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

/// The Linux desktop's accessibility bus.
class AtspiAccessibilityInterface final : public AccessibilityInterface {
 public:
  /// Whether the bus answers and accessibility is switched on; asking for it switches it on for the session.
  bool isProcessTrusted(AccessibilityTrustPrompt prompt) override;

  std::unique_ptr<AccessibilitySession> makeSession(
      const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) override;
};

}  // namespace quillo
