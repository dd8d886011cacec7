#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "QuilloCore/Capture/AccessibilityCaptureControl.h"
#include "QuilloLinux/Accessibility/AtspiBus.h"
#include "QuilloLinux/Accessibility/AtspiObject.h"

namespace quillo {

/// An application's root object and the process behind its connection.
struct AtspiRegisteredApplication {
  AtspiObject root;
  std::int32_t processIdentifier = 0;
};

/// The bus daemon's answer is the process behind a connection.
AtspiCall makeProcessCall(const std::string& busName, std::function<void(const AtspiReply&)> onReply);

/// Who is on the accessibility bus. Asks the registry and the bus daemon alone, so that no application can hold it up.
std::vector<AtspiRegisteredApplication> readAtspiRegistry(AtspiBus& bus, const AccessibilityCaptureControl& control);

/// The roots of one process, one for each connection that it has; none when it is not on the bus.
std::vector<AtspiObject> rootsOfProcess(AtspiBus& bus, const AccessibilityCaptureControl& control,
                                        std::int32_t processIdentifier);

/// Everyone on the bus for a caller without a connection, within a second; empty when there is no accessibility bus.
std::vector<AtspiRegisteredApplication> readAtspiRegistry();

}  // namespace quillo
