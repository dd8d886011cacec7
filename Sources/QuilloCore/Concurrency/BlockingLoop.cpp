#include "QuilloCore/Concurrency/BlockingLoop.h"

#include <condition_variable>
#include <mutex>

#include "QuilloCore/Concurrency/JobList.h"

namespace quillo {

class BlockingLoop::Core final : public JobQueue {
 public:
  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    if (isClosed_) return;
    jobs_.add(std::move(job));
    isNotEmpty_.notify_one();
  }

  void run() {
    std::unique_lock guard(lock_);
    for (isFinished_ = false;;) {
      isNotEmpty_.wait(guard, [&] { return !jobs_.isEmpty() || isFinished_; });
      if (jobs_.isEmpty()) return;
      jobs_.runFirst(guard);
    }
  }

  void finish() {
    const std::scoped_lock guard(lock_);
    isFinished_ = true;
    isNotEmpty_.notify_one();
  }

  /// Runs what is left, so that tasks that have been resumed also go on, and refuses more.
  void close() {
    std::unique_lock guard(lock_);
    while (!jobs_.isEmpty()) jobs_.runFirst(guard);
    isClosed_ = true;
  }

 private:
  std::mutex lock_;
  std::condition_variable isNotEmpty_;
  JobList jobs_;
  bool isFinished_ = false;
  bool isClosed_ = false;
};

BlockingLoop::BlockingLoop() : core_(std::make_shared<Core>()) {}

BlockingLoop::~BlockingLoop() {
  core_->close();
}

TaskExecutor BlockingLoop::executor() const {
  return TaskExecutor(core_);
}

void BlockingLoop::cancel() {
  const std::scoped_lock guard(lock_);
  isCancelled_ = true;
  task_.cancel();
}

void BlockingLoop::begin(TaskHandle task) {
  const std::scoped_lock guard(lock_);
  task_ = std::move(task);
  if (isCancelled_) task_.cancel();
}

void BlockingLoop::finish() {
  core_->finish();
}

void BlockingLoop::runJobs() {
  core_->run();
}

}  // namespace quillo
