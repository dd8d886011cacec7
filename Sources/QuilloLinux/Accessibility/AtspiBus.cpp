#include "QuilloLinux/Accessibility/AtspiBus.h"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <utility>

namespace quillo {

struct AtspiBus::Flight {
  AtspiBus* bus = nullptr;
  std::size_t position = 0;
  sd_bus_slot* slot = nullptr;
  std::function<void(const AtspiReply&)> onReply;
};

namespace {

struct AppendArguments {
  sd_bus_message* message;

  int operator()(std::monostate /*none*/) const { return 0; }
  int operator()(std::uint32_t value) const { return sd_bus_message_append(message, "u", value); }
  int operator()(std::int32_t value) const { return sd_bus_message_append(message, "i", value); }
  int operator()(std::pair<std::int32_t, std::int32_t> values) const {
    return sd_bus_message_append(message, "ii", values.first, values.second);
  }
  int operator()(std::pair<std::int32_t, std::uint32_t> values) const {
    return sd_bus_message_append(message, "iu", values.first, values.second);
  }
  int operator()(std::pair<const char*, const char*> texts) const {
    return sd_bus_message_append(message, "ss", texts.first, texts.second);
  }
  int operator()(const std::string& text) const { return sd_bus_message_append(message, "s", text.c_str()); }
  int operator()(const AtspiStateRule& rule) const {
    constexpr std::int32_t matchAll = 1;
    constexpr std::uint32_t canonicalOrder = 1;
    const std::uint64_t bits = std::uint64_t{1} << rule.state;
    return sd_bus_message_append(message, "(aiia{ss}iaiiasib)uib", 2, static_cast<std::int32_t>(bits & 0xFFFFFFFFU),
                                 static_cast<std::int32_t>(bits >> 32U), matchAll, 0, matchAll, 0, matchAll, 0,
                                 matchAll, 0, canonicalOrder, rule.maximumCount, 1);
  }
  int operator()(const AtspiScreenPoint& point) const {
    constexpr std::uint32_t screenCoordinates = 0;
    return sd_bus_message_append(message, "iiu", point.x, point.y, screenCoordinates);
  }
  int operator()(const AtspiEventRequest& request) const {
    return sd_bus_message_append(message, "sass", request.event.c_str(), 0, request.busName.c_str());
  }
};

}  // namespace

AtspiBus::AtspiBus(sd_bus* bus) : bus_(bus) {}

AtspiBus::~AtspiBus() {
  for (auto& flight : flights_) sd_bus_slot_unref(flight->slot);
  sd_bus_close_unref(bus_);
}

std::unique_ptr<AtspiBus> AtspiBus::connect(const std::string& address) {
  sd_bus* bus = nullptr;
  if (sd_bus_new(&bus) < 0) return nullptr;
  const bool isConnected =
      sd_bus_set_address(bus, address.c_str()) >= 0 && sd_bus_set_bus_client(bus, 1) >= 0 && sd_bus_start(bus) >= 0;
  if (!isConnected) {
    sd_bus_unref(bus);
    return nullptr;
  }
  return std::unique_ptr<AtspiBus>(new AtspiBus(bus));
}

bool AtspiBus::isUsable() {
  if (isLost_ || inFlight_ > 0 || !queued_.empty()) return false;
  // Answers that came after their reading had given them up are read and dropped here.
  int processed = 1;
  while (processed > 0) processed = sd_bus_process(bus_, nullptr);
  isLost_ = processed < 0;
  return !isLost_;
}

void AtspiBus::beginAnew() {
  timeoutMicroseconds_ = initialTimeoutMicroseconds;
  statistics_ = {};
}

void AtspiBus::setTimeout(double seconds) {
  timeoutMicroseconds_ = static_cast<std::uint64_t>(std::clamp(seconds, 0.001, 3600.0) * 1e6);
}

void AtspiBus::queue(AtspiCall call) {
  queued_.push_back(std::move(call));
}

/// Null when the bus is lost or the arguments do not fit.
sd_bus_message* AtspiBus::makeMessage(const AtspiCall& call) {
  if (isLost_) return nullptr;
  sd_bus_message* message = nullptr;
  int result = sd_bus_message_new_method_call(bus_, &message, call.object.busName.c_str(), call.object.path.c_str(),
                                              call.interface, call.member);
  if (result >= 0) result = std::visit(AppendArguments{message}, call.arguments);
  return result >= 0 ? message : sd_bus_message_unref(message);
}

void AtspiBus::tell(const AtspiCall& call) {
  sd_bus_message* message = makeMessage(call);
  if (message == nullptr) return;
  sd_bus_message_set_expect_reply(message, 0);
  sd_bus_send(bus_, message, nullptr);
  sd_bus_message_unref(message);
}

void AtspiBus::send(AtspiCall call) {
  if (idleFlights_.empty()) {
    flights_.push_back(std::make_unique<Flight>());
    flights_.back()->bus = this;
    idleFlights_.push_back(flights_.back().get());
  }
  Flight& flight = *idleFlights_.back();
  idleFlights_.pop_back();
  flight.onReply = std::move(call.onReply);
  ++inFlight_;

  sd_bus_message* message = makeMessage(call);
  int result = message == nullptr ? -1 : 0;
  if (result >= 0) {
    result = sd_bus_call_async(
        bus_, &flight.slot, message,
        [](sd_bus_message* reply, void* userData, sd_bus_error* /*error*/) {
          auto& landed = *static_cast<Flight*>(userData);
          landed.bus->land(landed, AtspiReply(reply));
          return 1;
        },
        &flight, timeoutMicroseconds_);
  }
  sd_bus_message_unref(message);
  if (result < 0) {
    land(flight, AtspiReply(AccessibilityErrorCode::invalidUIElement));
    return;
  }
  ++statistics_.callCount;
  statistics_.largestInFlight = std::max(statistics_.largestInFlight, inFlight_);
}

void AtspiBus::land(Flight& flight, const AtspiReply& reply) {
  const auto onReply = std::exchange(flight.onReply, nullptr);
  flight.slot = sd_bus_slot_unref(flight.slot);
  idleFlights_.push_back(&flight);
  --inFlight_;
  if (!onReply) return;
  try {
    onReply(reply);
  } catch (...) {
    // An exception must not pass through the library's C frames; `drain` throws it on.
    if (!handlerFailure_) handlerFailure_ = std::current_exception();
  }
}

void AtspiBus::failAll() {
  for (const auto& flight : flights_) {
    if (flight->onReply) land(*flight, AtspiReply(AccessibilityErrorCode::invalidUIElement));
  }
}

bool AtspiBus::drain(const AccessibilityCaptureControl& control, const std::function<bool()>& refill) {
  // Long enough to sleep, short enough that a cancellation is seen at once.
  constexpr std::uint64_t longestWaitMicroseconds = 20'000;
  while (true) {
    if (control.stopReason()) {
      queued_.clear();
      for (auto& flight : flights_) {
        if (flight->onReply) {
          flight->onReply = nullptr;
          land(*flight, AtspiReply(AccessibilityErrorCode::cannotComplete));
        }
      }
      return false;
    }
    while (inFlight_ < window) {
      if (queued_.empty() && !(refill && refill())) break;
      if (queued_.empty()) continue;
      AtspiCall next = std::move(queued_.front());
      queued_.pop_front();
      send(std::move(next));
    }
    if (handlerFailure_) std::rethrow_exception(std::exchange(handlerFailure_, nullptr));
    if (inFlight_ == 0) return true;
    const int processed = sd_bus_process(bus_, nullptr);
    if (handlerFailure_) continue;
    if (processed < 0) {
      isLost_ = true;
      failAll();
      continue;
    }
    if (processed > 0) continue;
    const std::uint64_t remaining = control.remainingNanoseconds() / 1000;
    sd_bus_wait(bus_, std::min(longestWaitMicroseconds, remaining + 1));
  }
}

void AtspiBus::call(AtspiCall call, const AccessibilityCaptureControl& control) {
  queue(std::move(call));
  drain(control);
}

AtspiCall makeGetCall(const AtspiObject& object, const char* interface, const char* property,
                      std::function<void(const AtspiReply&)> onReply) {
  return {object, "org.freedesktop.DBus.Properties", "Get", std::pair(interface, property), std::move(onReply)};
}

}  // namespace quillo
