#pragma once

#include <memory>
#include <thread>

#include "QuilloCore/Concurrency/MonotonicClock.h"

namespace quillo {

/// The system's monotonic clock, with a thread of its own for the calls.
class SystemMonotonicClock final : public MonotonicClock {
 public:
  SystemMonotonicClock();
  SystemMonotonicClock(const SystemMonotonicClock&) = delete;
  SystemMonotonicClock& operator=(const SystemMonotonicClock&) = delete;
  ~SystemMonotonicClock() override;

  std::uint64_t uptimeNanoseconds() override;
  Timer callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) override;

 private:
  class Schedule;
  std::shared_ptr<Schedule> schedule_;
  std::thread thread_;
};

}  // namespace quillo
