#include "QuilloCore/Concurrency/SerialQueue.h"

#include <pthread.h>

#include <condition_variable>
#include <cstddef>
#include <mutex>

#include "QuilloCore/Concurrency/JobList.h"

namespace quillo {
namespace {

void nameThisThread(const std::string& label) {
  constexpr std::size_t longestName = 15;
  const std::string name = label.substr(label.size() - std::min(label.size(), longestName));
  pthread_setname_np(pthread_self(), name.c_str());
}

}  // namespace

/// What the thread and everybody who posts share; outlives the queue where somebody still holds its executor.
class SerialQueue::Core final : public JobQueue {
 public:
  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    if (isClosed_) return;
    jobs_.add(std::move(job));
    isNotEmpty_.notify_one();
  }

  void runUntilClosed() {
    std::unique_lock guard(lock_);
    for (;;) {
      isNotEmpty_.wait(guard, [&] { return !jobs_.isEmpty() || isEnding_; });
      if (jobs_.isEmpty()) break;
      jobs_.runFirst(guard);
    }
    isClosed_ = true;
  }

  void end() {
    const std::scoped_lock guard(lock_);
    isEnding_ = true;
    isNotEmpty_.notify_one();
  }

 private:
  std::mutex lock_;
  std::condition_variable isNotEmpty_;
  JobList jobs_;
  bool isEnding_ = false;
  bool isClosed_ = false;
};

SerialQueue::SerialQueue(std::string label)
    : label_(std::move(label)), core_(std::make_shared<Core>()), thread_([core = core_, name = label_] {
        nameThisThread(name);
        core->runUntilClosed();
      }) {}

SerialQueue::~SerialQueue() {
  core_->end();
  thread_.join();
}

void SerialQueue::post(Job job) {
  core_->post(std::move(job));
}

TaskExecutor SerialQueue::executor() const {
  return TaskExecutor(core_);
}

}  // namespace quillo
