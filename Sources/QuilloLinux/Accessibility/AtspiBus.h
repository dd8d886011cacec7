#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"
#include "QuilloLinux/Accessibility/AtspiReply.h"
#include "QuilloLinux/Accessibility/AtspiStatistics.h"

struct sd_bus;
struct sd_bus_message;

namespace quillo {

/// A rule for Collection.GetMatches: objects that have this state.
struct AtspiStateRule {
  unsigned state;
  std::int32_t maximumCount;
};

/// The arguments of Component.GetAccessibleAtPoint.
struct AtspiScreenPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

/// The arguments of Registry.RegisterEvent: an event and the application whose events are meant.
struct AtspiEventRequest {
  std::string event;
  std::string busName;
};

/// The arguments of a call: none, a coordinate type or a number, two numbers, an offset and a granularity, two texts
/// (of Properties.Get), or a rule.
using AtspiArguments = std::variant<std::monostate, std::uint32_t, std::int32_t, std::pair<std::int32_t, std::int32_t>,
                                    std::pair<std::int32_t, std::uint32_t>, std::pair<const char*, const char*>,
                                    std::string, AtspiStateRule, AtspiEventRequest, AtspiScreenPoint>;

struct AtspiCall {
  AtspiObject object;
  const char* interface = nullptr;
  const char* member = nullptr;
  AtspiArguments arguments;
  std::function<void(const AtspiReply&)> onReply;
};

/// A connection to a message bus on which many calls are in flight at once. Used by one thread.
class AtspiBus {
 public:
  /// Past a hundred or so, more calls in flight slow the target down.
  static constexpr std::size_t window = 96;

  /// Null when the address cannot be connected to.
  static std::unique_ptr<AtspiBus> connect(const std::string& address);

  AtspiBus(const AtspiBus&) = delete;
  AtspiBus& operator=(const AtspiBus&) = delete;
  ~AtspiBus();

  /// Seconds that each later call may take.
  void setTimeout(double seconds);

  /// Sends a call whose answer does not matter.
  void tell(const AtspiCall& call);

  /// Queues a call. Its reply handler runs inside `drain` and may queue more.
  void queue(AtspiCall call);

  /// Sends what is queued, `window` calls at a time, until everything is answered. When nothing is queued any more and
  /// there is room, `refill` may queue more; it answers whether it did. Looks at the control between any two replies;
  /// false when it has stopped, with the unanswered calls forgotten.
  bool drain(const AccessibilityCaptureControl& control, const std::function<bool()>& refill = {});

  /// One call and its answer.
  void call(AtspiCall call, const AccessibilityCaptureControl& control);

  /// Whether the bus is still there and nothing is under way, as a connection must be that is used for another reading.
  bool isUsable();

  /// Forgets what belongs to the reading that ends: its time-out and its statistics.
  void beginAnew();

  const AtspiStatistics& statistics() const { return statistics_; }

 private:
  struct Flight;
  explicit AtspiBus(sd_bus* bus);
  sd_bus_message* makeMessage(const AtspiCall& call);
  void send(AtspiCall call);
  void land(Flight& flight, const AtspiReply& reply);
  void failAll();

  sd_bus* bus_;
  static constexpr std::uint64_t initialTimeoutMicroseconds = 3'000'000;
  std::uint64_t timeoutMicroseconds_ = initialTimeoutMicroseconds;
  std::deque<AtspiCall> queued_;
  std::vector<std::unique_ptr<Flight>> flights_;  // landed ones are reused
  std::vector<Flight*> idleFlights_;
  std::size_t inFlight_ = 0;
  bool isLost_ = false;
  std::exception_ptr handlerFailure_;
  AtspiStatistics statistics_;
};

/// The call that reads one property.
AtspiCall makeGetCall(const AtspiObject& object, const char* interface, const char* property,
                      std::function<void(const AtspiReply&)> onReply);

}  // namespace quillo
