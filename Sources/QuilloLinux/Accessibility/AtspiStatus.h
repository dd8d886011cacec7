#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sd_bus;

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

/// The session's accessibility service. Keeps its connection to the session bus from one question to the next and
/// connects anew when that has broken. A bus that does not answer costs a second for the connection and one for each
/// call. Used by one thread at a time.
class AtspiSessionBus {
 public:
  AtspiStatus readStatus();

  /// The accessibility bus's address; empty when there is none.
  std::string readAddress();

  /// Switches accessibility on for the session; false when the session does not let us. Applications of some toolkits
  /// take notice only when they start anew.
  bool enable();

 private:
  struct Close {
    void operator()(sd_bus* bus) const;
  };

  sd_bus* connection();

  std::unique_ptr<sd_bus, Close> bus_;
};

/// One question.
AtspiStatus readAtspiStatus();

/// What is missing, in a sentence, and what to do about it; both empty when all is there.
std::string describe(AtspiAvailability availability);
std::string remedy(AtspiAvailability availability);

}  // namespace quillo
