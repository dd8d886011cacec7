#pragma once

#include <condition_variable>
#include <mutex>

namespace quillo::test {

/// Closed at first; once open, it lets everybody through.
class Gate {
 public:
  void open() {
    const std::scoped_lock guard(lock_);
    isOpen_ = true;
    hasOpened_.notify_all();
  }

  void pass() {
    std::unique_lock guard(lock_);
    hasOpened_.wait(guard, [&] { return isOpen_; });
  }

 private:
  std::mutex lock_;
  std::condition_variable hasOpened_;
  bool isOpen_ = false;
};

}  // namespace quillo::test
