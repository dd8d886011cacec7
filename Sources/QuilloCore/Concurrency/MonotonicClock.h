#pragma once

#include <cstdint>
#include <functional>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// One call that is to come. Its end takes the call back; a call that is being made just then is made to its end.
class Timer {
 public:
  Timer() = default;
  explicit Timer(Job cancel) : cancel_(std::move(cancel)) {}
  Timer(Timer&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Timer& operator=(Timer&& other) noexcept;
  ~Timer();

 private:
  Job cancel_;
};

/// Time that only goes forward, and calls at moments of it. Thread-safe; outlives its timers.
class MonotonicClock {
 public:
  virtual ~MonotonicClock() = default;

  /// Nanoseconds since some fixed moment.
  virtual std::uint64_t uptimeNanoseconds() = 0;

  /// Calls `job` once, as soon as the uptime has reached the deadline and never from within this function, on a thread
  /// of the clock's: it must be quick and must not throw.
  [[nodiscard]] virtual Timer callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) = 0;
};

/// The uptime `seconds` after `start`. Not before it (a negative or undefined number counts as 0) and without overflow.
std::uint64_t uptimeAfter(std::uint64_t startNanoseconds, double seconds);

/// Suspends the calling task until the uptime has reached the deadline.
Task<> sleepUntil(MonotonicClock& clock, std::uint64_t deadlineUptimeNanoseconds);
Task<> sleepFor(MonotonicClock& clock, double seconds);

}  // namespace quillo
