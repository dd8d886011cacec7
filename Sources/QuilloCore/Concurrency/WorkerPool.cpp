#include "QuilloCore/Concurrency/WorkerPool.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace quillo {

class WorkerPool::Core {
 public:
  /// Returns whether the pool still takes jobs.
  bool post(Job job) {
    const std::scoped_lock guard(lock_);
    if (isClosed_) return false;
    jobs_.push_back(std::move(job));
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
    hasEnded_.wait(guard, [&] { return jobs_.empty() && idleCount_ == threads_.size(); });
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
      mayGoOn_.wait(guard, [&] { return !jobs_.empty() || isClosed_; });
      --idleCount_;
      if (jobs_.empty()) return;
      Job job = std::move(jobs_.front());
      jobs_.pop_front();
      guard.unlock();
      job();
      job = nullptr;
      guard.lock();
    }
  }

  std::mutex lock_;
  std::condition_variable mayGoOn_;
  std::condition_variable hasEnded_;
  std::deque<Job> jobs_;
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
      jobs_.push_back(std::move(job));
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
    const std::deque<Job> abandoned = std::move(jobs_);
    guard.unlock();
  }

  void runNext() {
    std::unique_lock guard(lock_);
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    guard.unlock();
    job();
    job = nullptr;
    guard.lock();
    if (jobs_.empty()) {
      isScheduled_ = false;
      return;
    }
    guard.unlock();
    schedule();
  }

  std::shared_ptr<Core> core_;
  std::mutex lock_;
  std::deque<Job> jobs_;
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
