#include "QuilloCore/Concurrency/TaskGroup.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "QuilloCore/Concurrency/PendingResult.h"

namespace quillo {

struct TaskGroup::State {
  std::map<std::uint64_t, TaskHandle> members;
  std::uint64_t nextNumber = 0;
  std::vector<std::shared_ptr<PendingResult<void>>> waiters;
};

/// Ends with the task, however that ends.
class TaskGroup::Membership {
 public:
  Membership(std::shared_ptr<State> state, std::uint64_t number) : state_(std::move(state)), number_(number) {}
  Membership(const Membership&) = delete;
  Membership& operator=(const Membership&) = delete;
  ~Membership() {
    state_->members.erase(number_);
    if (!state_->members.empty()) return;
    for (const auto& waiter : std::exchange(state_->waiters, {})) waiter->resolve({});
  }

 private:
  std::shared_ptr<State> state_;
  std::uint64_t number_;
};

TaskGroup::TaskGroup(TaskExecutor executor) : executor_(std::move(executor)), state_(std::make_shared<State>()) {}

Task<> TaskGroup::runMember(std::shared_ptr<State> state, std::uint64_t number,
                            std::move_only_function<Task<>()> body) {
  const Membership membership(std::move(state), number);
  Task<> running = body();
  co_await std::move(running);
}

TaskHandle TaskGroup::start(std::move_only_function<Task<>()> body) {
  const std::uint64_t number = state_->nextNumber++;
  TaskHandle handle = startTask(executor_, [state = state_, number, body = std::move(body)]() mutable {
    return runMember(std::move(state), number, std::move(body));
  });
  state_->members.emplace(number, handle);
  return handle;
}

bool TaskGroup::isEmpty() const {
  return state_->members.empty();
}

void TaskGroup::cancelAll() {
  for (const auto& [number, handle] : state_->members) handle.cancel();
}

Task<> TaskGroup::whenEmpty() {
  while (!isEmpty()) {
    auto empty = std::make_shared<PendingResult<void>>();
    state_->waiters.push_back(empty);
    Task<> waiting = waitFor(std::move(empty));
    co_await std::move(waiting);
  }
}

}  // namespace quillo
