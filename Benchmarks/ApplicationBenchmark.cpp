// Runs the application with its library in this process and does what a user does: opens the library, captures the
// window in front by the shortcut, pastes. Prints one line for each: name, median and longest milliseconds. Called by
// run-application, with the library and the window's number.

#include <fmt/format.h>

#include <QApplication>
#include <QEvent>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "DesktopPlatform.h"
#include "QuilloApp.h"

namespace quillo {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Moment = std::atomic<Clock::time_point>;

/// The display's pictures, and when the last one was taken.
class TimedWindowImages final : public WindowImageCapturing {
 public:
  TimedWindowImages(std::shared_ptr<WindowImageCapturing> images, Moment& taken)
      : images_(std::move(images)), taken_(taken) {}

  bool isAllowed() override { return images_->isAllowed(); }
  void prepare(std::uint32_t windowID) override { images_->prepare(windowID); }
  std::vector<CapturedWindowMetadata> capturableWindows() override { return images_->capturableWindows(); }
  std::optional<BitmapImage> image(std::uint32_t windowID) override {
    auto image = images_->image(windowID);
    // The second look at the window comes long after the panel.
    if (taken_.load() == Clock::time_point()) taken_ = Clock::now();
    return image;
  }

 private:
  std::shared_ptr<WindowImageCapturing> images_;
  Moment& taken_;
};

/// When the panel was first painted.
class PanelWatch final : public QObject {
 public:
  explicit PanelWatch(Moment& painted) : painted_(painted) {}

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Paint && painted_.load() == Clock::time_point() &&
        object->objectName() == QLatin1String("captureHeadsUpPanel"))
      painted_ = Clock::now();
    return false;
  }

 private:
  Moment& painted_;
};

/// How long the main loop left a job waiting, in milliseconds.
class LoopWatch {
 public:
  explicit LoopWatch(TaskExecutor loop) : thread_([this, loop = std::move(loop)] { watch(loop); }) {}
  LoopWatch(const LoopWatch&) = delete;
  LoopWatch& operator=(const LoopWatch&) = delete;
  ~LoopWatch() {
    isEnding_ = true;
    thread_.join();
  }

  /// Since it was last asked.
  double longest() { return longest_.exchange(0); }

 private:
  void watch(const TaskExecutor& loop) {
    while (!isEnding_) {
      const auto asked = Clock::now();
      auto answered = std::make_shared<std::promise<void>>();
      loop.queue()->post([answered] { answered->set_value(); });
      if (answered->get_future().wait_for(10s) != std::future_status::ready) continue;
      longest_ = std::max(longest_.load(), std::chrono::duration<double, std::milli>(Clock::now() - asked).count());
      std::this_thread::sleep_for(1ms);
    }
  }

  std::atomic<bool> isEnding_ = false;
  std::atomic<double> longest_ = 0;
  std::thread thread_;
};

class Figure {
 public:
  explicit Figure(std::string name) : name_(std::move(name)) {}

  void add(double milliseconds) { milliseconds_.push_back(milliseconds); }
  void add(Clock::duration duration) { add(std::chrono::duration<double, std::milli>(duration).count()); }
  void print() {
    std::ranges::sort(milliseconds_);
    fmt::print("{} {:.1f} {:.1f}\n", name_, milliseconds_[milliseconds_.size() / 2], milliseconds_.back());
  }

 private:
  std::string name_;
  std::vector<double> milliseconds_;
};

std::ptrdiff_t bundleCount(const std::filesystem::path& library) {
  return std::ranges::count_if(std::filesystem::directory_iterator(library),
                               [](const auto& entry) { return entry.path().extension() == ".quillo"; });
}

void run(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error(command + " failed");
}

struct Session {
  std::filesystem::path library;
  std::string window;
  std::function<void()> openLibrary;  ///< asks the application, on its thread
  LoopWatch& watch;
  Moment& taken;
  Moment& painted;
};

/// On a thread beside the application.
void use(Session& session) {
  constexpr int rounds = 9;
  const std::string bringToFront = "xdotool windowactivate --sync " + session.window;
  Figure starting("blocked-start");
  Figure opening("blocked-open");
  Figure storing("stored");
  Figure panel("panel");
  Figure capturing("blocked-capture");
  Figure pasting("blocked-paste");

  std::this_thread::sleep_for(1s);
  starting.add(session.watch.longest());
  session.openLibrary();
  std::this_thread::sleep_for(1s);
  opening.add(session.watch.longest());
  for (int i = 0; i < rounds; ++i) {
    run(bringToFront);
    const auto before = bundleCount(session.library);
    session.taken = session.painted = Clock::time_point();
    session.watch.longest();
    const auto pressed = Clock::now();
    run("xdotool key --delay 0 ctrl+alt+super+c");
    while (bundleCount(session.library) == before) {
      if (Clock::now() - pressed > 20s) throw std::runtime_error("the shortcut captured nothing");
      std::this_thread::sleep_for(1ms);
    }
    storing.add(Clock::now() - pressed);
    std::this_thread::sleep_for(500ms);  // for the list, the inspector and the panel to follow
    panel.add(session.painted.load() - session.taken.load());
    capturing.add(session.watch.longest());
  }
  for (int i = 0; i < 3; ++i) {
    run(bringToFront);
    session.watch.longest();
    run("xdotool key --delay 0 ctrl+alt+super+v");
    std::this_thread::sleep_for(2s);  // the delivery and its pauses
    pasting.add(session.watch.longest());
  }
  for (Figure* figure : {&starting, &opening, &storing, &panel, &capturing, &pasting}) figure->print();
}

int measure(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  Moment taken = Clock::time_point();
  Moment painted = Clock::time_point();
  PanelWatch panelWatch(painted);
  application.installEventFilter(&panelWatch);

  MainLoop loop;
  DesktopPlatform desktop(arguments[1], loop.executor());
  ApplicationPlatform platform = desktop.platform();
  platform.windowImages = std::make_shared<TimedWindowImages>(platform.windowImages, taken);
  LoopWatch watch(loop.executor());
  QuilloApp running(loop, platform);
  running.start(LaunchRequest::background);

  const auto queue = loop.executor().queue();
  Session session{.library = arguments[1],
                  .window = arguments[2],
                  .openLibrary = [&] { queue->post([&] { running.perform(LaunchRequest::open); }); },
                  .watch = watch,
                  .taken = taken,
                  .painted = painted};
  std::exception_ptr failure;
  std::thread user([&] {
    try {
      use(session);
    } catch (...) {
      failure = std::current_exception();
    }
    queue->post([] { QCoreApplication::exit(); });
  });
  QApplication::exec();
  user.join();
  if (failure) std::rethrow_exception(failure);
  return 0;
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  try {
    return quillo::measure(argumentCount, arguments);
  } catch (const std::exception& error) {
    fmt::print(stderr, "ApplicationBenchmark: {}\n", error.what());
    return 1;
  }
}
