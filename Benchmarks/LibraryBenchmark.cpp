// Opens the library's window over a library, scrolls it and searches it, and does the same to a bare list of as many
// lines of text; called by run-library, which makes a table of the lines "name median longest", in milliseconds.

#include <fmt/format.h>
#include <time.h>

#include <QApplication>
#include <QBuffer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStringListModel>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "DesktopPlatform.h"
#include "QuilloApp.h"
#include "QuilloCore/Artifacts/ArtifactStore.h"

namespace quillo {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto patience = 20s;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Of this thread's work: what the rest of the machine does not change.
double threadMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void print(std::string_view name, std::vector<double> times) {
  std::ranges::sort(times);
  fmt::print("{} {:.1f} {:.1f}\n", name, times[times.size() / 2], times.back());
}

/// Counts how often a widget is painted.
class Paintings final : public QObject {
 public:
  explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }

  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }

  int count = 0;
};

/// Turns the loop; returns for how long its thread worked at most without a pause.
double runUntil(std::string_view what, const std::function<bool()>& isDone) {
  const auto start = Clock::now();
  double longest = 0;
  while (!isDone()) {
    if (Clock::now() - start > patience) throw std::runtime_error(fmt::format("{} did not come", what));
    const double before = threadMilliseconds();
    QApplication::processEvents();
    longest = std::max(longest, threadMilliseconds() - before);
    std::this_thread::sleep_for(100us);
  }
  return longest;
}

double rest(Clock::duration time) {
  return runUntil("the end", [end = Clock::now() + time] { return Clock::now() > end; });
}

template <class Widget>
Widget& find(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* widget = window->findChild<Widget*>(QString::fromLatin1(name))) return *widget;
  }
  throw std::runtime_error(fmt::format("there is no widget {}", name));
}

/// Notices when a list was first painted with lines in it.
class FirstLines final : public QObject {
 public:
  explicit FirstLines(QListView& list) : list_(list) { list.viewport()->installEventFilter(this); }

  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    if (event->type() != QEvent::Paint || list_.model()->rowCount() == 0 || isFound_) return false;
    isFound_ = true;
    // After the painting that begins now.
    QMetaObject::invokeMethod(this, [this] { at = std::chrono::system_clock::now(); }, Qt::QueuedConnection);
    return false;
  }

  std::optional<std::chrono::system_clock::time_point> at;

 private:
  QListView& list_;
  bool isFound_ = false;
};

/// Prints how long after the process's start the first lines are there.
void waitForLines(QListView& list, const char* name, const char* startSeconds) {
  FirstLines lines(list);
  runUntil("the first line", [&] { return lines.at.has_value(); });
  const double now = std::chrono::duration<double>(lines.at->time_since_epoch()).count();
  print(name, {(now - std::stod(startSeconds)) * 1000});
}

/// Through the list as a wheel turns, then from place to place as one who drags its bar.
void scroll(QListView& list, const std::string& name) {
  QScrollBar& bar = *list.verticalScrollBar();
  const auto show = [&](int value, std::vector<double>& frames) {
    const double before = threadMilliseconds();
    bar.setValue(value);
    list.viewport()->repaint();
    QApplication::processEvents();  // pictures that have come
    frames.push_back(threadMilliseconds() - before);
    std::this_thread::sleep_for(10ms);
  };
  std::vector<double> wheel;
  std::vector<double> drag;
  for (int frame = 0; frame < 200; ++frame) show(bar.value() + 120, wheel);
  for (int frame = 0; frame < 100; ++frame) show(bar.maximum() / 100 * (frame * 37 % 100), drag);
  print(name + "-wheel", wheel);
  print(name + "-drag", drag);
}

/// Until the list shows what a key has found, and what the search through captured texts does to the thread after that.
void search() {
  auto& field = find<QLineEdit>("search");
  auto& count = find<QLabel>("count");
  std::vector<double> shown;
  std::vector<double> blocked;
  // In titles, in applications, in texts alone, and nowhere.
  for (const char* query : {"124", "mail", "button", "zebra"}) {
    for (const char letter : std::string_view(query)) {
      // It says that the texts are being searched, and is painted together with the list.
      Paintings paintings(count);
      const auto start = Clock::now();
      const double before = threadMilliseconds();
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QLatin1Char(letter)));
      QApplication::sendEvent(&field, &press);
      const double pressing = threadMilliseconds() - before;
      const double working = runUntil("what was found", [&] { return paintings.count > 0; });
      shown.push_back(millisecondsSince(start));
      blocked.push_back(std::max({pressing, working, rest(250ms)}));
    }
    field.clear();
    rest(500ms);
  }
  print("search", shown);
  print("search-blocked", blocked);
}

void measureLibrary(const char* path, const char* start, bool goesOn) {
  MainLoop loop;
  DesktopPlatform desktop(path, loop.executor());
  QuilloApp running(loop, desktop.platform());
  running.start(LaunchRequest::open);
  runUntil("the window", [] {
    return std::ranges::any_of(QApplication::topLevelWidgets(),
                               [](QWidget* widget) { return widget->objectName() == QLatin1String("library"); });
  });
  auto& list = find<QListView>("captures");
  waitForLines(list, "open", start);
  if (!goesOn) return;
  rest(1s);
  scroll(list, "scroll");
  search();
}

/// The same for a list of nothing but text.
void measureBareList(int count, const char* start, bool goesOn) {
  QStringList lines;
  for (int line = 0; line < count; ++line) lines.append(QStringLiteral("Capture %1").arg(line));
  QStringListModel model(lines);
  QListView list;
  list.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list.setModel(&model);
  list.resize(320, 700);
  list.show();
  waitForLines(list, "bare-open", start);
  if (goesOn) scroll(list, "bare-scroll");
}

std::string screenshot(int number) {
  QImage image(1280, 800, QImage::Format_RGB32);
  image.fill(QColor::fromHsv(number * 47 % 360, 24, 248));
  QPainter painter(&image);
  for (int line = 0; line < 60; ++line)
    painter.fillRect(40, 40 + line * 12, 300 + (line * 131 + number * 77) % 800, 6, QColor(90, 96, 110));
  painter.end();
  QBuffer png;
  image.save(&png, "PNG");
  return png.data().toStdString();
}

class NoTrash final : public TrashOperation {
 public:
  std::optional<std::filesystem::path> moveToTrash(const std::filesystem::path& /*path*/) override { return {}; }
  void restore(const std::filesystem::path& /*trashed*/, const std::filesystem::path& /*original*/) override {}
};

void makeLibrary(const char* path, int count, std::size_t textBytes) {
  PosixFileSystem files;
  NoTrash trash;
  SystemWallClock clock;
  RandomUUIDGenerator identifiers;
  ArtifactStore store(path, {files, trash, clock, identifiers}, ArtifactProjection::standard());
  std::array<std::string, 16> screenshots;
  std::ranges::generate(screenshots, [number = 0]() mutable { return screenshot(number++); });
  const std::vector<std::string> applications{"Editor", "Mail", "Terminal", "Web Browser", "Files", "Calendar"};
  const Date now = clock.now();
  for (int number = 0; number < count; ++number) {
    ContextArtifactDraft draft;
    ArtifactManifest& manifest = draft.manifest;
    manifest.id = identifiers.makeUUID();
    manifest.source.applicationName = applications[static_cast<std::size_t>(number) % applications.size()];
    manifest.title = fmt::format("Capture {} of {}", number, manifest.source.applicationName);
    manifest.createdAt = manifest.modifiedAt = now - number * 47min;
    while (manifest.contextText.size() < textBytes)
      manifest.contextText += fmt::format("- button \"Button {}\"\n", manifest.contextText.size());
    manifest.contextText += "\n## Coverage\n- All semantic interface elements are mapped.\n";
    draft.screenshotPNG = screenshots[static_cast<std::size_t>(number) % screenshots.size()];
    store.create(draft);
  }
}

int run(int argumentCount, char** arguments) {
  QApplication application(argumentCount, arguments);
  QApplication::setApplicationName(QStringLiteral("Quillo"));
  QApplication::setQuitOnLastWindowClosed(false);
  const std::string_view task = argumentCount > 1 ? arguments[1] : "";
  const bool goesOn = argumentCount == 5;
  if (task == "make" && argumentCount == 5) {
    makeLibrary(arguments[2], std::stoi(arguments[3]), std::stoul(arguments[4]));
  } else if (task == "library" && argumentCount >= 4) {
    measureLibrary(arguments[2], arguments[3], goesOn);
  } else if (task == "bare" && argumentCount >= 4) {
    measureBareList(std::stoi(arguments[2]), arguments[3], goesOn);
  } else {
    fmt::print(stderr,
               "usage: LibraryBenchmark make DIR COUNT BYTES | library DIR START [all] | bare COUNT START [all]\n");
    return 2;
  }
  return 0;
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  try {
    return quillo::run(argumentCount, arguments);
  } catch (const std::exception& error) {
    fmt::print(stderr, "LibraryBenchmark: {}\n", error.what());
    return 1;
  }
}
