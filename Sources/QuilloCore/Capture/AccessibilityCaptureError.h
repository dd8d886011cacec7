#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <variant>

namespace quillo {

/// Why an accessibility capture gave no snapshot. Trouble that leaves a snapshot stands in it as issues instead.
class AccessibilityCaptureError : public std::exception {
 public:
  struct InvalidProcessIdentifier {
    std::int32_t processIdentifier = 0;
    friend bool operator==(const InvalidProcessIdentifier&, const InvalidProcessIdentifier&) = default;
  };
  struct TargetUnavailable {
    std::int32_t processIdentifier = 0;
    friend bool operator==(const TargetUnavailable&, const TargetUnavailable&) = default;
  };
  struct TargetWindowUnavailable {
    std::int32_t processIdentifier = 0;
    std::uint32_t windowID = 0;
    std::string reason;  ///< a sentence
    friend bool operator==(const TargetWindowUnavailable&, const TargetWindowUnavailable&) = default;
  };
  struct CaptureTimedOut {
    double seconds = 0;
    friend bool operator==(const CaptureTimedOut&, const CaptureTimedOut&) = default;
  };
  struct AccessNotGranted {
    friend bool operator==(const AccessNotGranted&, const AccessNotGranted&) = default;
  };
  using Case = std::variant<InvalidProcessIdentifier, TargetUnavailable, TargetWindowUnavailable, CaptureTimedOut,
                            AccessNotGranted>;

  // Not explicit: an error is thrown by naming its case.
  AccessibilityCaptureError(Case value);  // NOLINT(google-explicit-constructor,hicpp-explicit-conversions)

  const Case& value() const { return value_; }
  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  friend bool operator==(const AccessibilityCaptureError& a, const AccessibilityCaptureError& b) {
    return a.value_ == b.value_;
  }

 private:
  Case value_;
  std::string description_;
};

}  // namespace quillo
