#pragma once

#include <cstdint>
#include <mutex>
#include <optional>

#include "QuilloCore/Support/Clocks.h"

namespace quillo {

enum class AccessibilityCaptureStopReason : std::uint8_t { cancelled, timedOut };

/// The deadline and the cancellation of one capture, shared between the waiting caller and the walking queue. It runs
/// until somebody cancels it or somebody looks at it after the deadline, and then never runs again. Thread-safe.
class AccessibilityCaptureControl {
 public:
  /// `timeout` in seconds; a negative or non-finite one counts as 0. The deadline is `startUptimeNanoseconds` (by
  /// default the provider's present) plus the timeout, without overflow.
  explicit AccessibilityCaptureControl(double timeout, UptimeProvider uptimeProvider = systemUptimeNanoseconds,
                                       std::optional<std::uint64_t> startUptimeNanoseconds = std::nullopt);

  double timeout() const { return timeout_; }
  std::uint64_t deadlineUptimeNanoseconds() const { return deadlineUptimeNanoseconds_; }

  /// Nanoseconds until the deadline, 0 when stopped.
  std::uint64_t remainingNanoseconds() const;

  /// Looks at the clock, then answers why the capture has stopped, if it has. The first reason stays.
  std::optional<AccessibilityCaptureStopReason> stopReason() const;

  void cancel();

  /// Returns while the capture runs. Throws AccessibilityCaptureError (captureTimedOut) or OperationCancelled.
  void checkpoint() const;

 private:
  double timeout_;
  UptimeProvider uptimeProvider_;
  std::uint64_t deadlineUptimeNanoseconds_;
  mutable std::mutex lock_;
  mutable std::optional<AccessibilityCaptureStopReason> stopReasonStorage_;
};

}  // namespace quillo
