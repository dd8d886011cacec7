#pragma once

#include <memory>

#include "QuilloCore/Concurrency/JobQueue.h"

namespace quillo {

/// Where a task runs: a job queue, kept alive as long as something may still be posted to it.
class TaskExecutor {
 public:
  explicit TaskExecutor(std::shared_ptr<JobQueue> queue) : queue_(std::move(queue)) {}

  const std::shared_ptr<JobQueue>& queue() const { return queue_; }

 private:
  std::shared_ptr<JobQueue> queue_;
};

}  // namespace quillo
