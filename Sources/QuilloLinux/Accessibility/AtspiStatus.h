#pragma once

#include <cstdint>
#include <string>

namespace quillo {

/// How far accessibility is available in this session.
enum class AtspiAvailability : std::uint8_t {
  available,
  noSessionBus,        ///< this process is not part of a desktop session
  noAccessibilityBus,  ///< the session has no accessibility service
  switchedOff,         ///< applications do not offer their interfaces
};

struct AtspiStatus {
  AtspiAvailability availability = AtspiAvailability::noSessionBus;
  std::string busAddress;  ///< empty when there is no accessibility bus

  friend bool operator==(const AtspiStatus&, const AtspiStatus&) = default;
};

/// Asks the session; takes a few milliseconds, at most two seconds.
AtspiStatus readAtspiStatus();

/// Switches accessibility on for the session; false when the session does not let us. Applications of some toolkits
/// take notice only when they start anew.
bool enableAtspi();

/// What is missing, in a sentence, and what to do about it; both empty when all is there.
std::string describe(AtspiAvailability availability);
std::string remedy(AtspiAvailability availability);

}  // namespace quillo
