#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "QuilloCore/Concurrency/MonotonicClock.h"

namespace quillo::test {

/// A clock that stands still until the test advances it. Calls are made on the thread that advances it.
class VirtualMonotonicClock final : public MonotonicClock {
 public:
  explicit VirtualMonotonicClock(std::uint64_t uptimeNanoseconds = 1'000'000'000'000);

  std::uint64_t uptimeNanoseconds() override;
  Timer callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) override;

  /// Moves on and makes the calls that become due, in their order, each at its own moment.
  void advance(double seconds);

  std::size_t timerCount() const;

  /// Blocks until another thread has set so many timers.
  void waitForTimers(std::size_t count) const;

 private:
  using Key = std::pair<std::uint64_t, std::uint64_t>;  // the deadline, and a number for its order
  struct Calls {
    std::mutex lock;
    std::condition_variable hasMore;
    std::map<Key, Job> byDeadline;
    std::uint64_t uptime = 0;
    std::uint64_t nextNumber = 0;
  };
  std::shared_ptr<Calls> calls_;
};

}  // namespace quillo::test
