#include "QuilloLinux/Keyboard/X11HotKeys.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "QuilloLinux/Keyboard/X11HotKeyGrabs.h"

namespace quillo {
namespace {

/// The handler and whether it still wants to be called; touched on the owner's thread only.
struct Delivery {
  HotKeyRegistering::Handler handler;
  bool isInstalled = true;
};

int makeWakeEvent() {
  const int event = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (event < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  return event;
}

}  // namespace

/// The thread that alone uses the connection.
class X11HotKeys::Listener {
 public:
  Listener(std::unique_ptr<X11HotKeyGrabs> grabs, std::shared_ptr<JobQueue> queue, Handler handler)
      : grabs_(std::move(grabs)),
        queue_(std::move(queue)),
        delivery_(std::make_shared<Delivery>(std::move(handler))),
        wakeEvent_(makeWakeEvent()),
        thread_([this] { listen(); }) {}
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  ~Listener() {
    delivery_->isInstalled = false;
    call([this](X11HotKeyGrabs& grabs) {
      grabs.releaseAll();
      isEnding_ = true;
    });
    thread_.join();
    ::close(wakeEvent_);
  }

  /// Runs the function on the listener's thread and returns when it has ended.
  void call(std::function<void(X11HotKeyGrabs&)> function) {
    std::unique_lock guard(lock_);
    call_ = std::move(function);
    const std::uint64_t one = 1;
    // Cannot fail: the counter is far from its end.
    [[maybe_unused]] const ssize_t written = ::write(wakeEvent_, &one, sizeof one);
    hasEnded_.wait(guard, [this] { return !call_; });
  }

 private:
  void listen() {
    bool isLost = false;
    while (!isEnding_) {
      X11HotKeyGrabs::Events events = grabs_->takeEvents();
      for (const HotKeyIdentity identity : events.released)
        deliver([identity](const Handler& handler) { handler.released(identity); });
      for (const auto& [identity, status] : events.lost)
        deliver([identity, status](const Handler& handler) { handler.lost(identity, status); });
      if (!isLost && grabs_->isBroken()) {
        isLost = true;
        deliver([](const Handler& handler) { handler.lost(std::nullopt, hotKeyDisplayIsUnavailable); });
      }
      // Calls may have read events; so look for those before sleeping.
      if (!runCall()) sleep(isLost);
    }
  }

  void sleep(bool isLost) const {
    std::array<pollfd, 2> awaited = {pollfd{.fd = wakeEvent_, .events = POLLIN, .revents = 0},
                                     pollfd{.fd = isLost ? -1 : grabs_->descriptor(), .events = POLLIN, .revents = 0}};
    ::poll(awaited.data(), awaited.size(), -1);
  }

  bool runCall() {
    std::uint64_t count = 0;
    if (::read(wakeEvent_, &count, sizeof count) != sizeof count) return false;
    const std::scoped_lock guard(lock_);
    if (!call_) return false;
    call_(*grabs_);
    call_ = nullptr;
    hasEnded_.notify_one();
    return true;
  }

  void deliver(std::move_only_function<void(const Handler&)> notice) {
    queue_->post([delivery = delivery_, notice = std::move(notice)]() mutable {
      if (delivery->isInstalled) notice(delivery->handler);
    });
  }

  std::unique_ptr<X11HotKeyGrabs> grabs_;  // the thread's
  bool isEnding_ = false;                  // the thread's
  std::shared_ptr<JobQueue> queue_;
  std::shared_ptr<Delivery> delivery_;
  std::mutex lock_;
  std::condition_variable hasEnded_;
  std::function<void(X11HotKeyGrabs&)> call_;
  int wakeEvent_;
  std::thread thread_;  // last, as it uses the others
};

X11HotKeys::X11HotKeys(TaskExecutor executor) : executor_(std::move(executor)) {}

X11HotKeys::~X11HotKeys() = default;

HotKeyStatus X11HotKeys::installHandler(Handler handler) {
  listener_.reset();
  auto grabs = X11HotKeyGrabs::open();
  if (!grabs) return hotKeyDisplayIsUnavailable;
  listener_ = std::make_unique<Listener>(std::move(grabs), executor_.queue(), std::move(handler));
  return hotKeySucceeded;
}

void X11HotKeys::removeHandler() {
  listener_.reset();
}

HotKeyRegistration X11HotKeys::registerHotKey(const QuilloHotKey& hotKey, HotKeyIdentity identity) {
  HotKeyRegistration made{hotKeyDisplayIsUnavailable, std::nullopt};
  if (!listener_) return made;
  const HotKeyReference reference = ++lastReference_;
  listener_->call([&](X11HotKeyGrabs& grabs) { made.status = grabs.grab(hotKey, identity, reference); });
  if (made.status == hotKeySucceeded) made.reference = reference;
  return made;
}

void X11HotKeys::unregisterHotKey(HotKeyReference reference) {
  if (listener_) listener_->call([&](X11HotKeyGrabs& grabs) { grabs.release(reference); });
}

}  // namespace quillo
