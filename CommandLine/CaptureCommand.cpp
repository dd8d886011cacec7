#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Commands.h"
#include "QuilloCore/Artifacts/ArtifactPasteTextRenderer.h"
#include "QuilloCore/Artifacts/ContextArtifactDraftMaker.h"
#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"
#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"
#include "QuilloCore/Concurrency/BlockingLoop.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"

namespace quillo {
namespace {

/// On a terminal, one line that each step overwrites; nothing anywhere else.
void showProgress(std::string_view step) {
  if (::isatty(STDERR_FILENO) == 0) return;
  std::fprintf(stderr, "\r\033[K%.*s", static_cast<int>(step.size()), step.data());
  std::fflush(stderr);
}

/// Takes the line away, also when an error is to stand in its place.
struct ClearedProgress {
  ClearedProgress() = default;
  ClearedProgress(const ClearedProgress&) = delete;
  ClearedProgress& operator=(const ClearedProgress&) = delete;
  ~ClearedProgress() { showProgress(""); }
};

/// Everything that a capture runs on; its queues end before what they use.
class CaptureRun {
 public:
  CaptureRun(const CaptureOptions& options, CommandEnvironment& environment)
      : options_(options),
        environment_(environment),
        signals_([this] {
          isInterrupted_ = true;
          loop_.cancel();
        }),
        capturer_(environment.accessibility, environment.windowList, environment.wallClock),
        screenshots_(environment.windowImages, clock_, screenshotQueue_) {}

  ContextArtifactDraft run() {
    return loop_.run([this] { return makeDraft(); });
  }

  /// An interrupted one leaves nothing; once the bundle is in place it stays.
  StoredArtifact store(const ContextArtifactDraft& draft, ArtifactStore& store) {
    return store.create(draft, [this] {
      if (isInterrupted_) throw OperationCancelled();
    });
  }

 private:
  Task<ContextArtifactDraft> makeDraft() {
    if (options_.delay > 0) {
      showProgress("Bring the window to the front …");
      Task<> pause = sleepFor(clock_, options_.delay);
      co_await std::move(pause);
    }
    const FrozenContextCaptureTarget target = freezeTarget();
    environment_.windowImages->prepare(target.windowID);

    showProgress("Capturing …");
    ContextCaptureService service(operations(), clock_, workers_.executor());
    Task<ContextCaptureResult> capturing = service.capture(target);
    ContextCaptureResult capture = co_await std::move(capturing);

    showProgress("Reading what was captured …");
    Task<ContextArtifactDraft> making = ContextArtifactDraftMaker::make(clock_, workers_.executor(), std::move(capture),
                                                                        environment_.identifiers.makeUUID());
    co_return co_await std::move(making);
  }

  FrozenContextCaptureTarget freezeTarget() {
    FocusedAccessibilityWindowHintReader hintReader(environment_.accessibility);
    FrontmostContextCaptureTargetResolver resolver(environment_.windowList, environment_.applications, hintReader,
                                                   environment_.wallClock,
                                                   {.processIdentifier = ::getpid(), .bundleIdentifier = {}});
    return options_.windowNumber ? resolver.resolveWindow(*options_.windowNumber) : resolver.resolve();
  }

  ContextCaptureOperations operations() {
    ContextCaptureOperations operations;
    operations.permissionProvider = [this] {
      return ContextCapturePermissionState{
          .screenRecordingGranted = environment_.windowImages->isAllowed(),
          .accessibilityGranted = capturer_.isAccessGranted(AccessibilityTrustPrompt::silent)};
    };
    operations.screenshotOperation = [this](WindowCaptureTarget target) {
      return screenshots_.capture(std::move(target));
    };
    operations.accessibilityOperation = [this](WindowCaptureTarget target) {
      return capturer_.capture(clock_, accessibilityQueue_, std::move(target));
    };
    operations.secondLookOperation = [this](WindowCaptureTarget target) {
      return screenshots_.lookAgain(std::move(target));
    };
    return operations;
  }

  const CaptureOptions& options_;
  CommandEnvironment& environment_;
  std::atomic<bool> isInterrupted_ = false;
  BlockingLoop loop_;
  TerminationSignals signals_;  // before whatever has threads
  SystemMonotonicClock clock_;
  AccessibilityContextCapturer capturer_;
  SerialQueue screenshotQueue_{"org.quillo.Quillo.screenshot"};
  SerialQueue accessibilityQueue_{"org.quillo.Quillo.accessibility-capture"};
  SerialQueue workers_{"org.quillo.Quillo.capture"};
  FrontmostWindowScreenshotCapturer screenshots_;
};

}  // namespace

CommandResult runCapture(const CaptureOptions& options, CommandEnvironment& environment, CommandLibrary& library) {
  const ClearedProgress progress;
  CaptureRun capture(options, environment);
  const ContextArtifactDraft draft = capture.run();
  showProgress("Storing …");
  const StoredArtifact stored = capture.store(draft, library.store());
  return {options.printsText ? ArtifactPasteTextRenderer::render(stored.manifest) : stored.manifest.id.text()};
}

}  // namespace quillo
