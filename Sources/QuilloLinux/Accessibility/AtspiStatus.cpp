#include "QuilloLinux/Accessibility/AtspiStatus.h"

#include <systemd/sd-bus.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace quillo {
namespace {

constexpr std::uint64_t timeoutMicroseconds = 1'000'000;
constexpr const char* service = "org.a11y.Bus";
constexpr const char* path = "/org/a11y/bus";

struct CloseBus {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
using SessionBus = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefMessage {
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

SessionBus openSessionBus() {
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0) return nullptr;
  sd_bus_set_method_call_timeout(bus, timeoutMicroseconds);
  return SessionBus(bus);
}

std::string readAddress(sd_bus* bus) {
  if (const char* address = std::getenv("AT_SPI_BUS_ADDRESS"); address != nullptr && *address != '\0') return address;
  sd_bus_message* raw = nullptr;
  if (sd_bus_call_method(bus, service, path, "org.a11y.Bus", "GetAddress", nullptr, &raw, nullptr) < 0) return {};
  const Message reply(raw);
  const char* address = nullptr;
  return sd_bus_message_read_basic(reply.get(), SD_BUS_TYPE_STRING, &address) > 0 ? address : "";
}

bool readIsEnabled(sd_bus* bus) {
  int isEnabled = 0;
  const int result = sd_bus_get_property_trivial(bus, service, path, "org.a11y.Status", "IsEnabled", nullptr,
                                                 SD_BUS_TYPE_BOOLEAN, &isEnabled);
  return result >= 0 && isEnabled != 0;
}

}  // namespace

AtspiStatus readAtspiStatus() {
  const SessionBus bus = openSessionBus();
  if (!bus) return {};
  std::string address = readAddress(bus.get());
  if (address.empty()) return {AtspiAvailability::noAccessibilityBus, {}};
  const auto availability = readIsEnabled(bus.get()) ? AtspiAvailability::available : AtspiAvailability::switchedOff;
  return {availability, std::move(address)};
}

bool enableAtspi() {
  const SessionBus bus = openSessionBus();
  return bus && sd_bus_set_property(bus.get(), service, path, "org.a11y.Status", "IsEnabled", nullptr, "b", 1) >= 0;
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
