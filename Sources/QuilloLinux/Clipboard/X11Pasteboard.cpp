#include "QuilloLinux/Clipboard/X11Pasteboard.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <system_error>
#include <thread>
#include <utility>

#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Suspension.h"
#include "QuilloLinux/Clipboard/X11Clipboard.h"

namespace quillo {
namespace {

/// Something to do with the clipboard, or with the error that there is instead.
using ClipboardJob = std::move_only_function<void(Outcome<X11Clipboard*>)>;

/// What the thread and everybody who asks it share.
class ClipboardJobs {
 public:
  ClipboardJobs() : event_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (event_ < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  }
  ClipboardJobs(const ClipboardJobs&) = delete;
  ClipboardJobs& operator=(const ClipboardJobs&) = delete;
  ~ClipboardJobs() { close(event_); }

  int event() const { return event_; }

  void post(ClipboardJob job) {
    {
      const std::scoped_lock guard(lock_);
      jobs_.push_back(std::move(job));
    }
    wake();
  }

  void end() {
    {
      const std::scoped_lock guard(lock_);
      isEnding_ = true;
    }
    wake();
  }

  bool isEnding() {
    const std::scoped_lock guard(lock_);
    return isEnding_;
  }

  std::optional<ClipboardJob> next() {
    const std::scoped_lock guard(lock_);
    if (jobs_.empty()) return std::nullopt;
    ClipboardJob job = std::move(jobs_.front());
    jobs_.pop_front();
    return job;
  }

  void clearEvent() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = ::read(event_, &count, sizeof(count));
  }

 private:
  void wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto size = ::write(event_, &one, sizeof(one));
  }

  int event_;
  std::mutex lock_;
  std::deque<ClipboardJob> jobs_;
  bool isEnding_ = false;
};

/// Milliseconds until then, rounded up; -1 for ever.
int pollTimeout(std::optional<X11Clipboard::Clock::time_point> deadline) {
  if (!deadline) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - X11Clipboard::Clock::now());
  return static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
}

}  // namespace

class X11Pasteboard::Thread {
 public:
  explicit Thread(X11SelectionLimits limits) : limits_(limits), thread_([this] { run(); }) {}
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;
  ~Thread() {
    jobs_->end();
    thread_.join();
  }

  const std::shared_ptr<ClipboardJobs>& jobs() const { return jobs_; }

 private:
  void run() {
    pthread_setname_np(pthread_self(), "clipboard");
    while (!jobs_->isEnding()) {
      runJobs();
      sleep();
    }
    runJobs();
    const auto cancelled = std::make_exception_ptr(OperationCancelled());
    if (clipboard_) clipboard_->failAll(cancelled);
  }

  void runJobs() {
    while (auto job = jobs_->next()) (*job)(clipboard());
  }

  Outcome<X11Clipboard*> clipboard() {
    try {
      if (clipboard_ && clipboard_->isLost()) replaceLost();
      if (!clipboard_) clipboard_ = std::make_unique<X11Clipboard>(limits_, 0);
      return clipboard_.get();
    } catch (const PasteboardError&) {
      return std::unexpected(std::current_exception());
    }
  }

  /// The display may be there again. What was known of its clipboard is not: no change count of before comes back, so
  /// that nobody takes what is there now for what was there then.
  void replaceLost() {
    const auto lost = std::make_exception_ptr(PasteboardError(PasteboardError::DisplayLost{}));
    clipboard_->failAll(lost);
    try {
      clipboard_ = std::make_unique<X11Clipboard>(limits_, clipboard_->knownChangeCount() + 1);
    } catch (const PasteboardError&) {
      std::rethrow_exception(lost);
    }
  }

  /// Until there is a job, an event, or a deadline has passed.
  void sleep() {
    std::array<pollfd, 2> sources{{{jobs_->event(), POLLIN, 0}, {-1, POLLIN, 0}}};
    int timeout = -1;
    if (clipboard_ && !clipboard_->isLost()) {
      // Flushing reads what has come by then, too; so nothing may be left unhandled behind it.
      do {
        clipboard_->flush();
      } while (clipboard_->handleEvents());
      sources[1].fd = clipboard_->fileDescriptor();
      timeout = pollTimeout(clipboard_->deadline());
    }
    poll(sources.data(), sources.size(), timeout);
    if (sources[0].revents != 0) jobs_->clearEvent();
    if (!clipboard_) return;
    clipboard_->handleEvents();
    if (clipboard_->isLost()) {
      clipboard_->failAll(std::make_exception_ptr(PasteboardError(PasteboardError::DisplayLost{})));
    } else {
      clipboard_->checkTime(X11Clipboard::Clock::now());
    }
  }

  X11SelectionLimits limits_;
  std::shared_ptr<ClipboardJobs> jobs_ = std::make_shared<ClipboardJobs>();
  std::unique_ptr<X11Clipboard> clipboard_;  // the thread's
  std::thread thread_;
};

namespace {

/// Runs `operation` with the clipboard on the thread and resolves `result` with what it returns or throws.
template <class T, class Operation>
void postCall(ClipboardJobs& jobs, std::shared_ptr<PendingResult<T>> result, Operation operation) {
  jobs.post([result = std::move(result), operation = std::move(operation)](Outcome<X11Clipboard*> clipboard) mutable {
    if (!clipboard) {
      result->fail(clipboard.error());
      return;
    }
    auto call = [&] { return operation(**clipboard); };
    result->resolve(outcomeOfCall(call));
  });
}

/// Runs `begin` with the clipboard on the thread; an event resolves `result` later. One that is given up is forgotten.
template <class T>
Task<T> postBeginning(const std::shared_ptr<ClipboardJobs>& jobs,
                      void (X11Clipboard::*begin)(std::shared_ptr<PendingResult<T>>)) {
  auto result = std::make_shared<PendingResult<T>>();
  jobs->post([result, begin](Outcome<X11Clipboard*> clipboard) {
    try {
      if (!clipboard) std::rethrow_exception(clipboard.error());
      if (!result->isResolved()) ((*clipboard)->*begin)(result);
    } catch (...) {
      result->fail(std::current_exception());
    }
  });
  result->whenResolved([jobs] {
    jobs->post([](Outcome<X11Clipboard*> clipboard) {
      if (clipboard) (*clipboard)->prune();
    });
  });
  return waitFor(std::move(result));
}

}  // namespace

X11Pasteboard::X11Pasteboard(X11SelectionLimits limits) : limits_(limits) {}

X11Pasteboard::~X11Pasteboard() = default;

X11Pasteboard::Thread& X11Pasteboard::thread() {
  const std::scoped_lock guard(lock_);
  if (!thread_) thread_ = std::make_unique<Thread>(limits_);
  return *thread_;
}

Task<std::uint64_t> X11Pasteboard::changeCount() {
  auto result = std::make_shared<PendingResult<std::uint64_t>>();
  postCall(*thread().jobs(), result, [](X11Clipboard& clipboard) { return clipboard.changeCount(); });
  return waitFor(std::move(result));
}

Task<PasteboardReading> X11Pasteboard::read() {
  return postBeginning<PasteboardReading>(thread().jobs(), &X11Clipboard::read);
}

Task<ClipboardConditionalWriteResult> X11Pasteboard::replaceContents(std::vector<PasteboardItem> items,
                                                                     PasteboardUse use,
                                                                     std::optional<std::uint64_t> ifUnchangedSince) {
  Task<> check = checkCancellation();
  co_await std::move(check);
  auto result = std::make_shared<PendingResult<ClipboardConditionalWriteResult>>();
  postCall(*thread().jobs(), result,
           [items = std::move(items), use, ifUnchangedSince](X11Clipboard& clipboard) mutable {
             return clipboard.replaceContents(std::move(items), use, ifUnchangedSince);
           });
  auto install = [result](Job resume) { result->install(std::move(resume)); };
  Task<> suspension = suspendUntilResumed(install, [] {});
  co_await std::move(suspension);
  co_return result->take();
}

Task<> X11Pasteboard::untilReplaced() {
  return postBeginning<void>(thread().jobs(), &X11Clipboard::awaitReplacement);
}

Task<bool> X11Pasteboard::handOver() {
  return postBeginning<bool>(thread().jobs(), &X11Clipboard::handOver);
}

}  // namespace quillo
