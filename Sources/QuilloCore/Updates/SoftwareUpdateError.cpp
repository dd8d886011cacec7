#include "QuilloCore/Updates/SoftwareUpdateError.h"

#include <fmt/format.h>

#include <utility>

#include "QuilloCore/Support/NumberFormatting.h"

namespace quillo {
namespace {

using Error = SoftwareUpdateError;

struct Describe {
  std::string operator()(const Error::NoSystemBus& /*e*/) const {
    return "This system has no system bus, over which its package manager could be asked for updates.";
  }
  std::string operator()(const Error::NoPackageService& /*e*/) const {
    return "This system has no PackageKit service that Quillo could ask for updates. Update Quillo with the system's "
           "own package manager.";
  }
  std::string operator()(const Error::NotInstalledFromPackage& e) const {
    return fmt::format("{} was not installed from a package, so the system's package manager has no updates for it.",
                       e.program);
  }
  std::string operator()(const Error::ServiceFailed& e) const {
    return "The system's package service failed: " + e.reason;
  }
  std::string operator()(const Error::ServiceUnresponsive& e) const {
    return fmt::format("The system's package service has not answered for {} seconds.", formatSeconds(e.seconds));
  }
};

}  // namespace

SoftwareUpdateError::SoftwareUpdateError(Case value)
    : value_(std::move(value)), description_(std::visit(Describe{}, value_)) {}

bool SoftwareUpdateError::isUnavailability() const {
  return !std::holds_alternative<ServiceFailed>(value_) && !std::holds_alternative<ServiceUnresponsive>(value_);
}

}  // namespace quillo
