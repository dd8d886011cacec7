#pragma once

#include <exception>
#include <string>
#include <variant>

#include "QuilloCore/Shortcuts/HotKeyRegistering.h"

namespace quillo {

/// Why the global shortcuts could not be reserved.
class GlobalHotKeyRegistrationError : public std::exception {
 public:
  struct InvalidConfiguration {
    std::string message;
    friend bool operator==(const InvalidConfiguration&, const InvalidConfiguration&) = default;
  };
  struct EventHandlerInstallationFailed {
    HotKeyStatus status = 0;
    friend bool operator==(const EventHandlerInstallationFailed&, const EventHandlerInstallationFailed&) = default;
  };
  struct HotKeyRegistrationFailed {
    std::string action;  ///< "capture" or "paste"
    HotKeyStatus status = 0;
    friend bool operator==(const HotKeyRegistrationFailed&, const HotKeyRegistrationFailed&) = default;
  };
  struct AlreadyRegistered {
    friend bool operator==(const AlreadyRegistered&, const AlreadyRegistered&) = default;
  };
  using Case =
      std::variant<InvalidConfiguration, EventHandlerInstallationFailed, HotKeyRegistrationFailed, AlreadyRegistered>;

  // Not explicit: an error is made by naming its case.
  GlobalHotKeyRegistrationError(Case value);  // NOLINT(google-explicit-constructor)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  /// What the user can do about it; empty when there is nothing but to try again.
  std::string recoverySuggestion() const;
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const GlobalHotKeyRegistrationError& a, const GlobalHotKeyRegistrationError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
