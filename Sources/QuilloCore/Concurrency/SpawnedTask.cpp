#include "QuilloCore/Concurrency/SpawnedTask.h"

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/bind_cancellation_slot.hpp>
#include <boost/asio/cancellation_signal.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/execution.hpp>
#include <boost/asio/execution_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>

#include "QuilloCore/Concurrency/OperationCancelled.h"

namespace quillo {

namespace asio = boost::asio;

namespace {

/// A job queue as the library wants its executors: every submission is a post.
class QueueExecutor {
 public:
  explicit QueueExecutor(std::shared_ptr<JobQueue> queue) : queue_(std::move(queue)) {}

  template <class Function>
  void execute(Function&& function) const {
    queue_->post(Job(std::forward<Function>(function)));
  }

  // The library asks for a context to hang services on; none of those that we use has any.
  static asio::execution_context& query(asio::execution::context_t /*unused*/) {
    static asio::execution_context context;
    return context;
  }
  static constexpr asio::execution::blocking_t query(asio::execution::blocking_t /*unused*/) {
    return asio::execution::blocking_t::never;
  }
  QueueExecutor require(asio::execution::blocking_t::never_t /*unused*/) const { return *this; }

  friend bool operator==(const QueueExecutor&, const QueueExecutor&) noexcept = default;

 private:
  std::shared_ptr<JobQueue> queue_;
};

Task<> runBody(std::move_only_function<Task<>()> body) {
  // Cancellation has one face, OperationCancelled, thrown by what waits; not also the library's own error.
  co_await asio::this_coro::throw_if_cancelled(false);
  Task<> running = body();
  co_await std::move(running);
}

}  // namespace

struct TaskHandle::State {
  explicit State(asio::any_io_executor where) : executor(std::move(where)) {}

  asio::any_io_executor executor;
  asio::cancellation_signal signal;  // used on the executor only
  bool isDone = false;               // likewise
};

void TaskHandle::cancel() const {
  if (!state_) return;
  asio::post(state_->executor, [state = state_] {
    if (state->isDone) return;
    state->signal.emit(asio::cancellation_type::terminal);
    // The library passes the signal on by a post that refers to memory of the signal, which must last until then.
    asio::post(state->executor, [state] {});
  });
}

TaskHandle startTask(const TaskExecutor& executor, std::move_only_function<Task<>()> body) {
  auto state = std::make_shared<TaskHandle::State>(QueueExecutor(executor.queue()));
  auto finish = [state](const std::exception_ptr& error) noexcept {
    state->isDone = true;
    try {
      if (error) std::rethrow_exception(error);
    } catch (const OperationCancelled&) {
      return;
    }
  };
  asio::co_spawn(state->executor, runBody(std::move(body)),
                 asio::bind_cancellation_slot(state->signal.slot(), std::move(finish)));
  return TaskHandle(std::move(state));
}

}  // namespace quillo
