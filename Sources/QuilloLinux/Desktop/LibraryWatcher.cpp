#include "QuilloLinux/Desktop/LibraryWatcher.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <map>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include "QuilloCore/Artifacts/ArtifactBundleLayout.h"

namespace quillo {
namespace {

namespace fs = std::filesystem;
namespace Layout = ArtifactBundleLayout;

constexpr int settlingMilliseconds = 50;

constexpr std::uint32_t libraryEvents =
    IN_ONLYDIR | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t bundleEvents = IN_ONLYDIR | IN_DONT_FOLLOW | IN_MOVED_TO | IN_CLOSE_WRITE;
constexpr std::uint32_t ancestorEvents = IN_ONLYDIR | IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace

/// The library itself is watched at once; everything after that but `end` belongs to the thread.
class LibraryWatcher::Watch {
 public:
  explicit Watch(fs::path libraryPath) : libraryPath_(std::move(libraryPath)) {
    if (endEvent_.number() < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    watchLibrary();
  }

  template <class Tell>
  void run(const Tell& tell) {
    watchBundles();
    while (hasChanged_ || wait(-1)) {
      readEvents();
      if (!std::exchange(hasChanged_, false)) continue;
      // More of the same is usually on its way.
      if (!waitForEndOnly(settlingMilliseconds)) return;
      readEvents();
      hasChanged_ = false;
      tell();
    }
  }

  void end() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(endEvent_.number(), &one, sizeof(one));
  }

 private:
  /// Returns false at the end.
  bool wait(int milliseconds) const {
    std::array<pollfd, 2> events{{{inotify_.number(), POLLIN, 0}, {endEvent_.number(), POLLIN, 0}}};
    while (poll(events.data(), events.size(), milliseconds) < 0 && errno == EINTR) {
    }
    return events[1].revents == 0;
  }

  bool waitForEndOnly(int milliseconds) const {
    pollfd event{endEvent_.number(), POLLIN, 0};
    while (poll(&event, 1, milliseconds) < 0 && errno == EINTR) {
    }
    return event.revents == 0;
  }

  int add(const fs::path& path, std::uint32_t events) const {
    return inotify_add_watch(inotify_.number(), path.c_str(), events);
  }
  void remove(int watch) const { inotify_rm_watch(inotify_.number(), watch); }

  void watchLibrary() {
    libraryWatch_ = add(libraryPath_, libraryEvents);
    if (libraryWatch_ < 0) {
      watchAncestor();
      // It may have been made just before the ancestor was watched.
      libraryWatch_ = add(libraryPath_, libraryEvents);
    }
    if (libraryWatch_ < 0) return;
    if (ancestorWatch_ >= 0) remove(std::exchange(ancestorWatch_, -1));
  }

  void watchBundles() {
    std::error_code error;
    for (fs::directory_iterator entry(libraryPath_, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
      const std::string name = entry->path().filename().native();
      watchBundle(name);
      hasChanged_ = hasChanged_ || hasChangedSinceBeginning(name);
    }
  }

  /// Of a bundle that may have been read by others before it was watched: replacing a file changes its directory.
  bool hasChangedSinceBeginning(const std::string& name) const {
    struct stat status{};
    if (!Layout::isBundleName(name) || lstat((libraryPath_ / name).c_str(), &status) < 0) return false;
    return std::tie(status.st_mtim.tv_sec, status.st_mtim.tv_nsec) >= std::tie(beganAt_.tv_sec, beganAt_.tv_nsec);
  }

  /// By the clock that file systems use.
  static timespec now() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME_COARSE, &time);
    return time;
  }

  /// The nearest directory that exists: whatever appears in it may lead to the library.
  void watchAncestor() {
    for (fs::path path = libraryPath_.parent_path(); ancestorWatch_ < 0; path = path.parent_path()) {
      ancestorWatch_ = add(path, ancestorEvents);
      if (path == path.parent_path()) return;
    }
  }

  void watchBundle(const std::string& name) {
    if (!Layout::isBundleName(name)) return;
    const int watch = add(libraryPath_ / name, bundleEvents);
    if (watch >= 0) bundles_[watch] = name;
  }

  void forgetBundle(std::string_view name) {
    for (const auto& [watch, bundle] : bundles_) {
      if (bundle != name) continue;
      remove(watch);
      bundles_.erase(watch);
      return;
    }
  }

  void beginAnew() {
    const bool wasThere = libraryWatch_ >= 0;
    for (const auto& [watch, name] : std::exchange(bundles_, {})) remove(watch);
    if (libraryWatch_ >= 0) remove(std::exchange(libraryWatch_, -1));
    if (ancestorWatch_ >= 0) remove(std::exchange(ancestorWatch_, -1));
    watchLibrary();
    watchBundles();
    hasChanged_ = hasChanged_ || wasThere || libraryWatch_ >= 0;
  }

  void readEvents() {
    alignas(inotify_event) std::array<char, 16'384> buffer;
    for (;;) {
      const ssize_t length = read(inotify_.number(), buffer.data(), buffer.size());
      if (length <= 0) return;
      for (std::size_t position = 0; position < static_cast<std::size_t>(length);) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + position, sizeof(event));
        const char* const name = buffer.data() + position + sizeof(event);
        process(event, event.len > 0 ? std::string(name) : std::string());
        position += sizeof(event) + event.len;
      }
    }
  }

  void process(const inotify_event& event, const std::string& name) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) return beginAnew();
    if (event.wd == ancestorWatch_) return beginAnew();
    if (event.wd == libraryWatch_) return processLibrary(event, name);
    if (!bundles_.contains(event.wd)) return;  // of a watch that has been given up
    if ((event.mask & IN_IGNORED) != 0) {
      bundles_.erase(event.wd);
    } else if (name == Layout::manifestFilename) {
      hasChanged_ = true;
    }
  }

  void processLibrary(const inotify_event& event, const std::string& name) {
    if ((event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED)) != 0) return beginAnew();
    if (!Layout::isBundleName(name)) return;
    hasChanged_ = true;
    if ((event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) {
      watchBundle(name);
    } else {
      forgetBundle(name);
    }
  }

  fs::path libraryPath_;
  timespec beganAt_ = now();
  Descriptor inotify_{inotify_init1(IN_CLOEXEC | IN_NONBLOCK)};  // none where the kernel gives out no more
  Descriptor endEvent_{eventfd(0, EFD_CLOEXEC)};
  int libraryWatch_ = -1;
  int ancestorWatch_ = -1;
  std::map<int, std::string> bundles_;  // by watch
  bool hasChanged_ = false;
};

LibraryWatcher::LibraryWatcher(fs::path libraryPath, const TaskExecutor& executor, std::function<void()> onChange)
    : onChange_(std::make_shared<std::function<void()>>(std::move(onChange))),
      watch_(std::make_unique<Watch>(std::move(libraryPath))),
      thread_([watch = watch_.get(), queue = executor.queue(), weak = std::weak_ptr(onChange_)] {
        watch->run([&] {
          queue->post([weak] {
            if (const auto alive = weak.lock()) (*alive)();
          });
        });
      }) {}

LibraryWatcher::~LibraryWatcher() {
  watch_->end();
  thread_.join();
}

}  // namespace quillo
