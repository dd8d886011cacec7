#include "QuilloCore/Concurrency/SystemMonotonicClock.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>
#include <map>
#include <mutex>
#include <utility>

#include "QuilloCore/Support/Clocks.h"

namespace quillo {
namespace {

std::chrono::steady_clock::time_point timePoint(std::uint64_t uptimeNanoseconds) {
  constexpr auto latest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  return std::chrono::steady_clock::time_point{
      std::chrono::nanoseconds{static_cast<std::int64_t>(std::min(uptimeNanoseconds, latest))}};
}

}  // namespace

/// The calls to come, in the order of their deadlines.
class SystemMonotonicClock::Schedule {
 public:
  /// A deadline and a number that tells apart calls with the same one.
  using Key = std::pair<std::uint64_t, std::uint64_t>;

  Key add(std::uint64_t deadline, Job job) {
    const std::scoped_lock guard(lock_);
    const Key key{deadline, nextNumber_++};
    calls_.emplace(key, std::move(job));
    if (calls_.begin()->first == key) hasChanged_.notify_one();
    return key;
  }

  void remove(Key key) {
    std::unique_lock guard(lock_);
    const auto node = calls_.extract(key);
    guard.unlock();  // what the call holds goes without the lock
  }

  void run() {
    std::unique_lock guard(lock_);
    while (!isEnding_) {
      if (calls_.empty()) {
        hasChanged_.wait(guard);
      } else if (const auto deadline = calls_.begin()->first.first; systemUptimeNanoseconds() < deadline) {
        hasChanged_.wait_until(guard, timePoint(deadline));
      } else {
        auto node = calls_.extract(calls_.begin());
        guard.unlock();
        node.mapped()();
        node = {};
        guard.lock();
      }
    }
  }

  void end() {
    const std::scoped_lock guard(lock_);
    isEnding_ = true;
    hasChanged_.notify_one();
  }

 private:
  std::mutex lock_;
  std::condition_variable hasChanged_;
  std::map<Key, Job> calls_;
  std::uint64_t nextNumber_ = 0;
  bool isEnding_ = false;
};

SystemMonotonicClock::SystemMonotonicClock()
    : schedule_(std::make_shared<Schedule>()), thread_([schedule = schedule_] { schedule->run(); }) {}

SystemMonotonicClock::~SystemMonotonicClock() {
  schedule_->end();
  thread_.join();
}

std::uint64_t SystemMonotonicClock::uptimeNanoseconds() {
  return systemUptimeNanoseconds();
}

Timer SystemMonotonicClock::callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) {
  const auto key = schedule_->add(deadlineUptimeNanoseconds, std::move(job));
  return Timer([schedule = schedule_, key] { schedule->remove(key); });
}

}  // namespace quillo
