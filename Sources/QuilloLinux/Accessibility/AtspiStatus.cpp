#include "QuilloLinux/Accessibility/AtspiStatus.h"

#include <systemd/sd-bus.h>

#include <cstdlib>
#include <memory>
#include <utility>

#include "QuilloCore/Support/Clocks.h"

namespace quillo {
namespace {

constexpr std::uint64_t timeoutMicroseconds = 1'000'000;
constexpr const char* service = "org.a11y.Bus";
constexpr const char* path = "/org/a11y/bus";

struct UnrefMessage {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

/// Speaks the bus's greeting. A bus that is stopped accepts connections all the same, and the library would wait for
/// its answer for a minute and a half.
bool becomesReady(sd_bus* bus) {
  const std::uint64_t started = systemUptimeNanoseconds();
  while (sd_bus_is_ready(bus) == 0) {
    const int processed = sd_bus_process(bus, nullptr);
    if (processed < 0) return false;
    if (processed > 0) continue;
    const std::uint64_t elapsed = (systemUptimeNanoseconds() - started) / 1000;
    if (elapsed >= timeoutMicroseconds || sd_bus_wait(bus, timeoutMicroseconds - elapsed) < 0) return false;
  }
  return sd_bus_is_ready(bus) > 0;
}

bool readIsEnabled(sd_bus* bus) {
  int isEnabled = 0;
  const int result = sd_bus_get_property_trivial(bus, service, path, "org.a11y.Status", "IsEnabled", nullptr,
                                                 SD_BUS_TYPE_BOOLEAN, &isEnabled);
  return result >= 0 && isEnabled != 0;
}

}  // namespace

void AtspiSessionBus::Close::operator()(sd_bus* bus) const {
  // Every call here awaits its answer, so that nothing is left to be sent.
  sd_bus_close_unref(bus);
}

sd_bus* AtspiSessionBus::connection() {
  // Reading what has come tells whether the bus is still there.
  while (bus_) {
    const int processed = sd_bus_process(bus_.get(), nullptr);
    if (processed == 0) break;
    if (processed < 0) bus_.reset();
  }
  if (!bus_) {
    sd_bus* bus = nullptr;
    if (sd_bus_open_user(&bus) < 0) return nullptr;
    bus_.reset(bus);
    sd_bus_set_method_call_timeout(bus, timeoutMicroseconds);
    if (!becomesReady(bus)) bus_.reset();
  }
  return bus_.get();
}

std::string AtspiSessionBus::readAddress() {
  sd_bus* bus = connection();
  if (bus == nullptr) return {};
  if (const char* address = std::getenv("AT_SPI_BUS_ADDRESS"); address != nullptr && *address != '\0') return address;
  sd_bus_message* raw = nullptr;
  if (sd_bus_call_method(bus, service, path, "org.a11y.Bus", "GetAddress", nullptr, &raw, nullptr) < 0) return {};
  const Message reply(raw);
  const char* address = nullptr;
  return sd_bus_message_read_basic(reply.get(), SD_BUS_TYPE_STRING, &address) > 0 ? address : "";
}

AtspiStatus AtspiSessionBus::readStatus() {
  if (connection() == nullptr) return {};
  std::string address = readAddress();
  if (address.empty()) return {AtspiAvailability::noAccessibilityBus, {}};
  const auto availability = readIsEnabled(bus_.get()) ? AtspiAvailability::available : AtspiAvailability::switchedOff;
  return {availability, std::move(address)};
}

bool AtspiSessionBus::enable() {
  sd_bus* bus = connection();
  return bus != nullptr &&
         sd_bus_set_property(bus, service, path, "org.a11y.Status", "IsEnabled", nullptr, "b", 1) >= 0;
}

AtspiStatus readAtspiStatus() {
  return AtspiSessionBus().readStatus();
}

std::string describe(AtspiAvailability availability) {
  switch (availability) {
    case AtspiAvailability::available: return {};
    case AtspiAvailability::noSessionBus: return "There is no session bus, so no accessibility bus can be found.";
    case AtspiAvailability::noAccessibilityBus: return "The session's accessibility bus does not answer.";
    case AtspiAvailability::switchedOff: return "Accessibility is switched off in this session.";
  }
  return {};
}

std::string remedy(AtspiAvailability availability) {
  switch (availability) {
    case AtspiAvailability::available: return {};
    case AtspiAvailability::noSessionBus:
      return "Run quillo inside the desktop session (DBUS_SESSION_BUS_ADDRESS must be set).";
    case AtspiAvailability::noAccessibilityBus: return "Install the package at-spi2-core and log in again.";
    case AtspiAvailability::switchedOff:
      return "Switch it on with: busctl --user set-property org.a11y.Bus /org/a11y/bus org.a11y.Status IsEnabled b "
             "true; "
             "then restart the applications that are already open.";
  }
  return {};
}

}  // namespace quillo
