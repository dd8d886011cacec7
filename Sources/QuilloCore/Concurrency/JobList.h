#pragma once

#include <cstddef>
#include <deque>
#include <mutex>
#include <utility>

#include "QuilloCore/Concurrency/JobQueue.h"

namespace quillo {

/// The jobs that wait in a queue, first come first. Guarded by the queue's own lock, which is held at every call.
class JobList {
 public:
  void add(Job job) { jobs_.push_back(std::move(job)); }
  bool isEmpty() const { return jobs_.empty(); }
  std::size_t size() const { return jobs_.size(); }

  /// Runs the first one, without the lock: it may post, and so may what it holds when that goes.
  void runFirst(std::unique_lock<std::mutex>& guard) {
    Job job = std::move(jobs_.front());
    jobs_.pop_front();
    guard.unlock();
    job();
    job = nullptr;
    guard.lock();
  }

  /// All of them, for who drops them without the lock.
  std::deque<Job> takeAll() { return std::exchange(jobs_, {}); }

 private:
  std::deque<Job> jobs_;
};

}  // namespace quillo
