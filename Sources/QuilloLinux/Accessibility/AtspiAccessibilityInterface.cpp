#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"

#include <utility>

#include "QuilloLinux/Accessibility/AtspiConnections.h"
#include "QuilloLinux/Accessibility/AtspiSession.h"

namespace quillo {

AtspiAccessibilityInterface::AtspiAccessibilityInterface(StatisticsObserver observer)
    : observer_(std::move(observer)), connections_(std::make_shared<AtspiConnections>()) {}

bool AtspiAccessibilityInterface::isProcessTrusted(AccessibilityTrustPrompt prompt) {
  AtspiStatus status = connections_->status();
  if (status.availability == AtspiAvailability::switchedOff && prompt == AccessibilityTrustPrompt::askUser &&
      connections_->enable()) {
    status = connections_->status();
  }
  return status.availability == AtspiAvailability::available;
}

std::unique_ptr<AccessibilitySession> AtspiAccessibilityInterface::makeSession(
    const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) {
  return std::make_unique<AtspiSession>(connections_, target, std::move(control), observer_);
}

}  // namespace quillo
