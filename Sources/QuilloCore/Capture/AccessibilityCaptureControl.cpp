#include "QuilloCore/Capture/AccessibilityCaptureControl.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {
namespace {

std::uint64_t saturatingNanoseconds(double seconds) {
  constexpr double nanosecondsPerSecond = 1e9;
  constexpr double twoToThe64th = 18446744073709551616.0;
  const double product = seconds * nanosecondsPerSecond;
  return product >= twoToThe64th ? std::numeric_limits<std::uint64_t>::max() : static_cast<std::uint64_t>(product);
}

std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) {
  return a + std::min(b, std::numeric_limits<std::uint64_t>::max() - a);
}

}  // namespace

AccessibilityCaptureControl::AccessibilityCaptureControl(double timeout, UptimeProvider uptimeProvider,
                                                         std::optional<std::uint64_t> startUptimeNanoseconds)
    : timeout_(std::isfinite(timeout) && timeout > 0 ? timeout : 0), uptimeProvider_(std::move(uptimeProvider)) {
  const std::uint64_t start = startUptimeNanoseconds ? *startUptimeNanoseconds : uptimeProvider_();
  deadlineUptimeNanoseconds_ = saturatingSum(start, saturatingNanoseconds(timeout_));
}

std::uint64_t AccessibilityCaptureControl::remainingNanoseconds() const {
  const std::uint64_t now = uptimeProvider_();
  const std::lock_guard guard(lock_);
  return stopReasonStorage_ || now >= deadlineUptimeNanoseconds_ ? 0 : deadlineUptimeNanoseconds_ - now;
}

std::optional<AccessibilityCaptureStopReason> AccessibilityCaptureControl::stopReason() const {
  const bool isPastDeadline = uptimeProvider_() >= deadlineUptimeNanoseconds_;
  const std::lock_guard guard(lock_);
  if (isPastDeadline && !stopReasonStorage_) stopReasonStorage_ = AccessibilityCaptureStopReason::timedOut;
  return stopReasonStorage_;
}

void AccessibilityCaptureControl::cancel() {
  const std::lock_guard guard(lock_);
  if (!stopReasonStorage_) stopReasonStorage_ = AccessibilityCaptureStopReason::cancelled;
}

void AccessibilityCaptureControl::checkpoint() const {
  const auto reason = stopReason();
  if (!reason) return;
  if (*reason == AccessibilityCaptureStopReason::cancelled) throw OperationCancelled();
  throw AccessibilityCaptureError(AccessibilityCaptureError::CaptureTimedOut{timeout_});
}

}  // namespace quillo
