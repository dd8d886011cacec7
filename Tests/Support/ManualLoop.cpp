#include "Tests/Support/ManualLoop.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace quillo::test {

class ManualLoop::Core final : public JobQueue {
 public:
  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    jobs_.push_back(std::move(job));
    hasMore_.notify_all();
  }

  bool runOne(std::chrono::milliseconds patience) {
    std::unique_lock guard(lock_);
    if (!hasMore_.wait_for(guard, patience, [&] { return !jobs_.empty(); })) return false;
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    guard.unlock();
    job();
    return true;
  }

 private:
  std::mutex lock_;
  std::condition_variable hasMore_;
  std::deque<Job> jobs_;
};

ManualLoop::ManualLoop() : core_(std::make_shared<Core>()) {}

ManualLoop::~ManualLoop() {
  runReady();
}

TaskExecutor ManualLoop::executor() const {
  return TaskExecutor(core_);
}

void ManualLoop::runReady() {
  while (runOne(std::chrono::milliseconds(0))) continue;
}

bool ManualLoop::runOne(std::chrono::milliseconds patience) {
  return core_->runOne(patience);
}

bool ManualLoop::runUntil(const std::function<bool()>& condition) {
  while (!condition()) {
    if (!runOne(std::chrono::seconds(10))) return false;
  }
  return true;
}

}  // namespace quillo::test
