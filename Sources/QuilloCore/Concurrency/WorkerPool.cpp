#include "QuilloCore/Concurrency/WorkerPool.h"

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "QuilloCore/Concurrency/JobList.h"

namespace quillo {

class WorkerPool::Core {
 public:
  /// Returns whether the pool still takes jobs.
  bool post(Job job) {
    const std::scoped_lock guard(lock_);
    if (isClosed_) return false;
    jobs_.add(std::move(job));
    if (jobs_.size() > idleCount_ && threads_.size() < maximumThreadCount) {
      threads_.emplace_back([this] { work(); });
    } else {
      mayGoOn_.notify_one();
    }
    return true;
  }

  /// Runs all jobs, also those that they post, and ends the threads.
  void close() {
    std::unique_lock guard(lock_);
    isEnding_ = true;
    mayGoOn_.notify_all();
    hasEnded_.wait(guard, [&] { return jobs_.isEmpty() && idleCount_ == threads_.size(); });
    isClosed_ = true;
    mayGoOn_.notify_all();
    guard.unlock();
    for (std::thread& thread : threads_) thread.join();
  }

 private:
  static constexpr std::size_t maximumThreadCount = 64;

  void work() {
    std::unique_lock guard(lock_);
    for (;;) {
      ++idleCount_;
      if (isEnding_) hasEnded_.notify_one();
      mayGoOn_.wait(guard, [&] { return !jobs_.isEmpty() || isClosed_; });
      --idleCount_;
      if (jobs_.isEmpty()) return;
      jobs_.runFirst(guard);
    }
  }

  std::mutex lock_;
  std::condition_variable mayGoOn_;
  std::condition_variable hasEnded_;
  JobList jobs_;
  std::vector<std::thread> threads_;
  std::size_t idleCount_ = 0;
  bool isEnding_ = false;
  bool isClosed_ = false;
};

/// Hands its jobs to the pool one by one. The pool holds the lane while it has work.
class WorkerPool::Lane final : public JobQueue, public std::enable_shared_from_this<Lane> {
 public:
  explicit Lane(std::shared_ptr<Core> core) : core_(std::move(core)) {}

  void post(Job job) override {
    {
      const std::scoped_lock guard(lock_);
      if (isClosed_) return;
      jobs_.add(std::move(job));
      if (isScheduled_) return;
      isScheduled_ = true;
    }
    schedule();
  }

 private:
  void schedule() {
    if (core_->post([self = shared_from_this()] { self->runNext(); })) return;
    // What the jobs hold may hold this lane, and may post to it as it goes.
    std::unique_lock guard(lock_);
    isClosed_ = true;
    const auto abandoned = jobs_.takeAll();
    guard.unlock();
  }

  void runNext() {
    std::unique_lock guard(lock_);
    jobs_.runFirst(guard);
    if (jobs_.isEmpty()) {
      isScheduled_ = false;
      return;
    }
    guard.unlock();
    schedule();
  }

  std::shared_ptr<Core> core_;
  std::mutex lock_;
  JobList jobs_;
  bool isScheduled_ = false;
  bool isClosed_ = false;
};

WorkerPool::WorkerPool() : core_(std::make_shared<Core>()) {}

WorkerPool::~WorkerPool() {
  core_->close();
}

TaskExecutor WorkerPool::makeExecutor() {
  return TaskExecutor(std::make_shared<Lane>(core_));
}

}  // namespace quillo
