#include "Tests/Support/ManualLoop.h"

#include <chrono>
#include <utility>

namespace quillo::test {

class ManualLoop::Core final : public JobQueue {
 public:
  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    jobs_.push_back(std::move(job));
    hasMore_.notify_all();
  }

  bool runFirst() {
    std::unique_lock guard(lock_);
    if (jobs_.empty()) return false;
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    guard.unlock();
    job();
    return true;
  }

  bool waitForMore() {
    std::unique_lock guard(lock_);
    return hasMore_.wait_for(guard, std::chrono::seconds(10), [&] { return !jobs_.empty(); });
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
  while (core_->runFirst()) {
  }
}

bool ManualLoop::runUntil(const std::function<bool()>& condition) {
  while (!condition()) {
    if (!core_->runFirst() && !core_->waitForMore()) return false;
  }
  return true;
}

}  // namespace quillo::test
