#pragma once

#include <functional>
#include <memory>

#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloLinux/Accessibility/AtspiStatistics.h"

namespace quillo {

class AtspiConnections;

/// The Linux desktop's accessibility bus.
class AtspiAccessibilityInterface final : public AccessibilityInterface {
 public:
  using StatisticsObserver = std::function<void(const AtspiStatistics&)>;

  /// The observer is told at the end of every session what the session asked for.
  explicit AtspiAccessibilityInterface(StatisticsObserver observer = {});

  /// Whether the bus answers and accessibility is switched on; asking for it switches it on for the session.
  bool isProcessTrusted(AccessibilityTrustPrompt prompt) override;

  std::unique_ptr<AccessibilitySession> makeSession(
      const WindowCaptureTarget& target, std::shared_ptr<const AccessibilityCaptureControl> control) override;

 private:
  StatisticsObserver observer_;
  std::shared_ptr<AtspiConnections> connections_;  ///< sessions that were given up may outlive the interface
};

}  // namespace quillo
