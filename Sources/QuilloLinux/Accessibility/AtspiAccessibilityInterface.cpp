#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"

#include <utility>

#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiSession.h"
#include "QuilloLinux/Accessibility/AtspiStatus.h"

namespace quillo {

bool AtspiAccessibilityInterface::isProcessTrusted(AccessibilityTrustPrompt prompt) {
  AtspiStatus status = readAtspiStatus();
  if (status.availability == AtspiAvailability::switchedOff && prompt == AccessibilityTrustPrompt::askUser &&
      enableAtspi()) {
    status = readAtspiStatus();
  }
  return status.availability == AtspiAvailability::available;
}

std::unique_ptr<AccessibilitySession> AtspiAccessibilityInterface::makeSession(
    const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) {
  const AtspiStatus status = readAtspiStatus();
  auto bus = status.busAddress.empty() ? nullptr : AtspiBus::connect(status.busAddress);
  return std::make_unique<AtspiSession>(std::move(bus), target, std::move(control), observer_);
}

}  // namespace quillo
