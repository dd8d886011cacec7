#include "QuilloCore/Capture/AccessibilityCaptureError.h"

#include <fmt/format.h>

#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {
namespace {

struct Describe {
  std::string operator()(const AccessibilityCaptureError::InvalidProcessIdentifier& e) const {
    return fmt::format("{} is not a valid target process identifier.", e.processIdentifier);
  }
  std::string operator()(const AccessibilityCaptureError::TargetUnavailable& e) const {
    return fmt::format("The Accessibility API could not connect to process {}.", e.processIdentifier);
  }
  std::string operator()(const AccessibilityCaptureError::TargetWindowUnavailable& e) const {
    return fmt::format("Accessibility could not resolve frozen window {} in PID {}: {}", e.windowID,
                       e.processIdentifier, e.reason);
  }
  std::string operator()(const AccessibilityCaptureError::CaptureTimedOut& e) const {
    return fmt::format("Accessibility capture exceeded its {}-second safety deadline.", formatSeconds(e.seconds));
  }
  std::string operator()(const AccessibilityCaptureError::AccessNotGranted& /*unused*/) const {
    return "Quillo needs Accessibility access in System Settings to capture application context.";
  }
};

}  // namespace

AccessibilityCaptureError::AccessibilityCaptureError(Case value)
    : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

}  // namespace quillo
