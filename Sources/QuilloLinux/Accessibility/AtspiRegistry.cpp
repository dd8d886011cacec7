#include "QuilloLinux/Accessibility/AtspiRegistry.h"

#include <utility>

#include "QuilloLinux/Accessibility/AtspiStatus.h"

namespace quillo {

AtspiCall makeProcessCall(const std::string& busName, std::function<void(const AtspiReply&)> onReply) {
  const AtspiObject daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
  return {daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID", busName, std::move(onReply)};
}

std::vector<AtspiRegisteredApplication> readAtspiRegistry(AtspiBus& bus, const AccessibilityCaptureControl& control) {
  const AtspiObject registry{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
  std::vector<AtspiObject> roots;
  bus.call({registry,
            "org.a11y.atspi.Accessible",
            "GetChildren",
            {},
            [&](const AtspiReply& reply) { roots = reply.objects().value_or(std::vector<AtspiObject>{}); }},
           control);
  std::vector<AtspiRegisteredApplication> applications;
  for (const AtspiObject& root : roots) {
    bus.queue(makeProcessCall(root.busName, [&](const AtspiReply& reply) {
      if (const auto process = reply.uint32()) applications.push_back({root, static_cast<std::int32_t>(*process)});
    }));
  }
  if (!bus.drain(control)) applications.clear();
  return applications;
}

std::vector<AtspiObject> rootsOfProcess(AtspiBus& bus, const AccessibilityCaptureControl& control,
                                        std::int32_t processIdentifier) {
  std::vector<AtspiObject> roots;
  for (AtspiRegisteredApplication& candidate : readAtspiRegistry(bus, control)) {
    if (candidate.processIdentifier == processIdentifier) roots.push_back(std::move(candidate.root));
  }
  return roots;
}

std::vector<AtspiRegisteredApplication> readAtspiRegistry() {
  const AccessibilityCaptureControl control(1.0);
  const AtspiStatus status = readAtspiStatus();
  const auto bus = status.busAddress.empty() ? nullptr : AtspiBus::connect(status.busAddress);
  return bus ? readAtspiRegistry(*bus, control) : std::vector<AtspiRegisteredApplication>{};
}

}  // namespace quillo
