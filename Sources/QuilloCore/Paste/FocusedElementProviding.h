#pragma once

#include <cstdint>
#include <expected>
#include <string>

#include "QuilloCore/Capture/AccessibilityInterface.h"

namespace quillo {

struct FocusedElement {
  std::string identity;  ///< not empty; means something to whoever made it
  bool isTerminal = false;

  friend bool operator==(const FocusedElement&, const FocusedElement&) = default;
};

enum class FocusedElementAbsence : std::uint8_t {
  notExposed,  ///< the application names no element that keys go to
  noAnswer,    ///< it did not answer in time
};

/// Asks applications which of their elements has the focus. A call may block for as long as the time-out says, a few
/// times over at most. Used by one thread.
class FocusedElementProviding {
 public:
  virtual ~FocusedElementProviding() = default;

  /// Whether applications can be asked at all.
  virtual bool isAllowed(AccessibilityTrustPrompt prompt) = 0;

  /// `messagingTimeout` in seconds.
  virtual std::expected<FocusedElement, FocusedElementAbsence> focusedElement(std::int32_t processIdentifier,
                                                                              double messagingTimeout) = 0;

  /// Whether that element still has the focus of its application; not when it does not answer.
  virtual bool isFocused(const std::string& identity, double messagingTimeout) = 0;
};

}  // namespace quillo
