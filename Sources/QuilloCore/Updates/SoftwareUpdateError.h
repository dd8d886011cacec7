#pragma once

#include <exception>
#include <string>
#include <variant>

namespace quillo {

/// Why the system's package service could not be asked, or what it answered instead.
class SoftwareUpdateError : public std::exception {
 public:
  struct NoSystemBus {
    friend bool operator==(const NoSystemBus&, const NoSystemBus&) = default;
  };
  struct NoPackageService {
    friend bool operator==(const NoPackageService&, const NoPackageService&) = default;
  };
  struct NotInstalledFromPackage {
    std::string program;  ///< the path of what runs
    friend bool operator==(const NotInstalledFromPackage&, const NotInstalledFromPackage&) = default;
  };
  struct ServiceFailed {
    std::string reason;  ///< in the service's words
    friend bool operator==(const ServiceFailed&, const ServiceFailed&) = default;
  };
  struct ServiceUnresponsive {
    double seconds = 0;  ///< how long it has said nothing
    friend bool operator==(const ServiceUnresponsive&, const ServiceUnresponsive&) = default;
  };
  using Case = std::variant<NoSystemBus, NoPackageService, NotInstalledFromPackage, ServiceFailed, ServiceUnresponsive>;

  // Not explicit: an error is thrown by naming its case.
  SoftwareUpdateError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  /// Whether updates cannot be had here at all, so that asking again is of no use.
  bool isUnavailability() const;

  friend bool operator==(const SoftwareUpdateError& a, const SoftwareUpdateError& b) { return a.value_ == b.value_; }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
