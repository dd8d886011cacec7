#include "QuilloApp/Interface/MainLoop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <mutex>
#include <system_error>
#include <utility>

#include "QuilloCore/Concurrency/JobList.h"

namespace quillo {

/// What the loop and everybody who posts share; outlives the loop where somebody still holds its executor. The event
/// is signalled whenever there are jobs.
class MainLoop::Core final : public JobQueue {
 public:
  Core() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (event_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  }
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;
  ~Core() override { ::close(event_); }

  int event() const { return event_; }

  void post(Job job) override {
    const std::scoped_lock guard(lock_);
    if (isClosed_) return;
    jobs_.add(std::move(job));
    if (jobs_.size() == 1) signal();
  }

  /// Runs the jobs that are there now.
  void runTurn() {
    std::unique_lock guard(lock_);
    std::uint64_t count = 0;
    [[maybe_unused]] const auto bytesRead = ::read(event_, &count, sizeof count);
    // A job that opens an event loop of its own must not have the next one run inside it.
    if (isRunning_) return;
    isRunning_ = true;
    for (std::size_t remaining = jobs_.size(); remaining > 0 && !jobs_.isEmpty(); --remaining) jobs_.runFirst(guard);
    isRunning_ = false;
    if (!jobs_.isEmpty()) signal();
  }

  void close() {
    std::unique_lock guard(lock_);
    while (!jobs_.isEmpty()) jobs_.runFirst(guard);
    isClosed_ = true;
  }

 private:
  void signal() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto bytesWritten = ::write(event_, &one, sizeof one);
  }

  int event_;
  std::mutex lock_;
  JobList jobs_;
  bool isRunning_ = false;
  bool isClosed_ = false;
};

MainLoop::MainLoop() : core_(std::make_shared<Core>()), notifier_(core_->event(), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [core = core_] { core->runTurn(); });
}

MainLoop::~MainLoop() {
  core_->close();
}

TaskExecutor MainLoop::executor() const {
  return TaskExecutor(core_);
}

bool MainLoop::runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!isDone()) {
    const auto remaining =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
    if (remaining <= 0) return false;
    pollfd waited{core_->event(), POLLIN, 0};
    if (::poll(&waited, 1, static_cast<int>(remaining)) > 0) core_->runTurn();
  }
  return true;
}

}  // namespace quillo
