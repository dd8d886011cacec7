#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <string>

#include "QuilloCore/Paste/FocusedElementProviding.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiStatus.h"

namespace quillo {

/// The focused element as the accessibility bus names it: the connection and the path of an object, which stay the same
/// as long as the object lives. Keeps its connections open. Used by one thread.
class AtspiFocusedElement final : public FocusedElementProviding {
 public:
  /// Whether the bus answers and accessibility is switched on; asking for it switches it on for the session.
  bool isAllowed(AccessibilityTrustPrompt prompt) override;

  std::expected<FocusedElement, FocusedElementAbsence> focusedElement(std::int32_t processIdentifier,
                                                                      double messagingTimeout) override;

  bool isFocused(const std::string& identity, double messagingTimeout) override;

 private:
  AtspiSessionBus sessionBus_;
  std::string busAddress_;
  std::unique_ptr<AtspiBus> bus_;
};

}  // namespace quillo
