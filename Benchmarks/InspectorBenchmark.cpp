// How long it takes to open a capture of 10,000 elements in the inspector, and for how long at a time its thread works
// meanwhile: processor time, which the rest of the machine does not change.

#include <fmt/format.h>
#include <time.h>

#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

#include "FolioFixture.h"
#include "QuilloApp/Inspector/PastePreview.h"
#include "QuilloCore/Artifacts/ArtifactProjection.h"
#include "SyntheticSnapshots.h"

namespace quillo::test {
namespace {

constexpr int captureCount = 7;

double threadMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

std::string picture() {
  QImage image(1920, 1080, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) image.setPixel(x, y, qRgb(x % 251, y % 241, (x / 16 + y / 16) % 2 * 200));
  QBuffer png;
  image.save(&png, "PNG");
  return png.data().toStdString();
}

class InspectorBenchmark : public FolioFixture {
 public:
  void TestBody() override {}

  void run() {
    ContextArtifactDraft page;
    page.accessibilitySnapshot = bench::makePage(10'000);
    page.interfaceObservation = ArtifactProjection::standard().makeObservation(page.accessibilitySnapshot);
    page.screenshotPNG = picture();
    page.manifest.title = "Page";
    page.manifest.createdAt = page.manifest.modifiedAt = wallClock.present;
    page.manifest.source = {"Browser", std::nullopt, "Page", ArtifactRect{0, 0, 1920, 1080}};
    std::vector<UUID> ids;
    for (int count = 0; count < captureCount; ++count) {
      page.manifest.id = identifiers.makeUUID();
      ids.push_back(store(page));
    }
    pane->show();
    start();
    std::vector<double> whole;
    std::vector<double> slices;
    std::size_t lineCount = 0;
    for (const UUID& id : ids) {
      longest_ = 0;
      const auto began = std::chrono::steady_clock::now();
      last_ = threadMilliseconds();
      model->select(id);
      finish([&] { return state().selectedArtifact && state().selectedArtifact->id() == id; });
      finish([&] { return !tasks.isEmpty(); });  // the pane has been told, and reads
      finish([&] { return tasks.isEmpty(); });
      while (!find<PastePreview>("pastePreview").isComplete()) step();
      const AccessibilityLedger* ledger = find<LedgerPane>("ledgerPane").ledger();
      if (ledger == nullptr || !find<ScreenshotView>("screenshot").hasPicture())
        throw std::runtime_error("the capture is not open");
      lineCount = ledger->size();
      whole.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - began).count());
      slices.push_back(longest_);
    }
    row(fmt::format("opening a capture of {} elements, ms", lineCount).c_str(), whole, "under 300");
    row("  its thread at work without a pause, ms", slices, "at most 50");
  }

 private:
  void step() {
    application.processEvents();
    const double now = threadMilliseconds();
    longest_ = std::max(longest_, now - last_);
    last_ = now;
  }

  void finish(const std::function<bool()>& isDone) {
    loop.runUntil([&] {
      // A job and the events that follow it are each a turn of the application's loop.
      const double now = threadMilliseconds();
      longest_ = std::max(longest_, now - last_);
      last_ = now;
      step();
      return isDone();
    });
  }

  static void row(const char* name, std::vector<double> values, const char* promised) {
    std::ranges::sort(values);
    fmt::print("{:<44} {:>9.1f} {:>9.1f}  {}\n", name, values[values.size() / 2], values.back(), promised);
  }

  double last_ = 0;
  double longest_ = 0;
};

}  // namespace
}  // namespace quillo::test

int main() {
  quillo::test::InspectorBenchmark().run();
  return 0;
}
