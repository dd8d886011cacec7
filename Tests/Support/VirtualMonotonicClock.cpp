#include "Tests/Support/VirtualMonotonicClock.h"

#include <algorithm>

namespace quillo::test {

VirtualMonotonicClock::VirtualMonotonicClock(std::uint64_t uptimeNanoseconds) : calls_(std::make_shared<Calls>()) {
  calls_->uptime = uptimeNanoseconds;
}

std::uint64_t VirtualMonotonicClock::uptimeNanoseconds() {
  const std::scoped_lock guard(calls_->lock);
  return calls_->uptime;
}

Timer VirtualMonotonicClock::callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) {
  const std::scoped_lock guard(calls_->lock);
  const Key key{deadlineUptimeNanoseconds, calls_->nextNumber++};
  calls_->byDeadline.emplace(key, std::move(job));
  calls_->hasMore.notify_all();
  return Timer([calls = calls_, key] {
    std::unique_lock callsGuard(calls->lock);
    const auto node = calls->byDeadline.extract(key);
    callsGuard.unlock();
  });
}

void VirtualMonotonicClock::advance(double seconds) {
  std::unique_lock guard(calls_->lock);
  const std::uint64_t end = uptimeAfter(calls_->uptime, seconds);
  auto& byDeadline = calls_->byDeadline;
  while (!byDeadline.empty() && byDeadline.begin()->first.first <= end) {
    auto node = byDeadline.extract(byDeadline.begin());
    calls_->uptime = std::max(calls_->uptime, node.key().first);
    guard.unlock();
    node.mapped()();
    node = {};
    guard.lock();
  }
  calls_->uptime = end;
}

std::size_t VirtualMonotonicClock::timerCount() const {
  const std::scoped_lock guard(calls_->lock);
  return calls_->byDeadline.size();
}

void VirtualMonotonicClock::waitForTimers(std::size_t count) const {
  std::unique_lock guard(calls_->lock);
  calls_->hasMore.wait(guard, [&] { return calls_->byDeadline.size() >= count; });
}

}  // namespace quillo::test
