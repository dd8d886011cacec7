#pragma once

#include <exception>
#include <expected>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/Suspension.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// A value, or the error that was thrown instead.
template <class T>
using Outcome = std::expected<T, std::exception_ptr>;

/// A result that arrives once, from any thread, for the one task that waits for it. The first resolution counts, all
/// later ones are dropped; one lock decides which is the first, and nothing is called while it is held.
///
/// Whoever makes one has to resolve it: a task that waits for ever is never freed.
template <class T>
class PendingResult {
 public:
  /// Returns whether this resolution was the first.
  bool resolve(Outcome<T> outcome) {
    std::unique_lock guard(lock_);
    if (outcome_) return false;
    outcome_ = std::move(outcome);
    Job resume = std::move(resume_);
    std::vector<Job> followers = std::move(followers_);
    guard.unlock();
    for (Job& follower : followers) follower();
    if (resume) resume();
    return true;
  }

  bool fail(std::exception_ptr error) { return resolve(std::unexpected(std::move(error))); }

  bool isResolved() const {
    const std::scoped_lock guard(lock_);
    return outcome_.has_value();
  }

  /// Calls `follower` once the result is there and before its waiter goes on; at once when it is already there.
  void whenResolved(Job follower) {
    addOrCall(std::move(follower), [&](Job job) { followers_.push_back(std::move(job)); });
  }

  /// As `whenResolved`, for the one waiter.
  void install(Job resume) {
    addOrCall(std::move(resume), [&](Job job) { resume_ = std::move(job); });
  }

  /// The value, or the thrown error. To be called once, when resolved.
  T take() {
    const std::unique_lock guard(lock_);
    if (!outcome_->has_value()) std::rethrow_exception(std::move(outcome_->error()));
    if constexpr (!std::is_void_v<T>) return std::move(**outcome_);
  }

 private:
  template <class Add>
  void addOrCall(Job job, const Add& add) {
    {
      const std::scoped_lock guard(lock_);
      if (!outcome_) {
        add(std::move(job));
        return;
      }
    }
    job();
  }

  mutable std::mutex lock_;
  std::optional<Outcome<T>> outcome_;
  Job resume_;
  std::vector<Job> followers_;
};

/// Waits for the result. Cancelling the waiting task resolves it with OperationCancelled.
template <class T>
Task<T> waitFor(std::shared_ptr<PendingResult<T>> pending) {
  auto install = [&pending](Job resume) { pending->install(std::move(resume)); };
  auto cancel = [pending] { pending->fail(std::make_exception_ptr(OperationCancelled())); };
  Task<> suspension = suspendUntilResumed(install, cancel);
  co_await std::move(suspension);
  co_return pending->take();
}

/// What a synchronous function yields.
template <class Function>
Outcome<std::invoke_result_t<Function&>> outcomeOfCall(Function& function) {
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Function&>>) {
      function();
      return {};
    } else {
      return function();
    }
  } catch (...) {
    return std::unexpected(std::current_exception());
  }
}

/// What a task yields. Never throws.
template <class T>
Task<Outcome<T>> outcomeOf(Task<T> task) {
  try {
    if constexpr (std::is_void_v<T>) {
      co_await std::move(task);
      co_return Outcome<T>{};
    } else {
      co_return co_await std::move(task);
    }
  } catch (...) {
    co_return std::unexpected(std::current_exception());
  }
}

}  // namespace quillo
