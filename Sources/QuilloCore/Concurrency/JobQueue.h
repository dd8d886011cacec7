#pragma once

#include <functional>

namespace quillo {

using Job = std::move_only_function<void()>;

/// Runs jobs one at a time, in the order in which they are posted: a thread of its own, an event loop, or a lane of a
/// pool. `post` may be called from any thread and never runs the job itself. A job that is posted after the queue's
/// end is destroyed without running.
class JobQueue {
 public:
  virtual ~JobQueue() = default;
  virtual void post(Job job) = 0;
};

}  // namespace quillo
