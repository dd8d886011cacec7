#include "QuilloCore/Concurrency/MonotonicClock.h"

#include <limits>
#include <memory>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"

namespace quillo {

Timer& Timer::operator=(Timer&& other) noexcept {
  if (this == &other) return *this;
  if (cancel_) cancel_();
  cancel_ = std::exchange(other.cancel_, nullptr);
  return *this;
}

Timer::~Timer() {
  if (cancel_) cancel_();
}

std::uint64_t uptimeAfter(std::uint64_t startNanoseconds, double seconds) {
  constexpr std::uint64_t latest = std::numeric_limits<std::uint64_t>::max();
  constexpr double firstTooLarge = 18446744073709551616.0;
  const double nanoseconds = seconds * 1e9;
  if (!(nanoseconds > 0)) return startNanoseconds;
  const std::uint64_t added = nanoseconds >= firstTooLarge ? latest : static_cast<std::uint64_t>(nanoseconds);
  return added > latest - startNanoseconds ? latest : startNanoseconds + added;
}

// The clock outlives what waits for it.
// NOLINTBEGIN(cppcoreguidelines-avoid-reference-coroutine-parameters)
Task<> sleepUntil(MonotonicClock& clock, std::uint64_t deadlineUptimeNanoseconds) {
  auto elapsed = std::make_shared<PendingResult<void>>();
  const Timer timer = clock.callAt(deadlineUptimeNanoseconds, [elapsed] { elapsed->resolve({}); });
  Task<> waiting = waitFor(elapsed);
  co_await std::move(waiting);
}

Task<> sleepFor(MonotonicClock& clock, double seconds) {
  return sleepUntil(clock, uptimeAfter(clock.uptimeNanoseconds(), seconds));
}
// NOLINTEND(cppcoreguidelines-avoid-reference-coroutine-parameters)

}  // namespace quillo
