#include "QuilloCore/Capture/ContextCaptureService.h"

#include <fmt/format.h>

#include <cmath>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"

namespace quillo {
namespace {

using Error = ContextCaptureServiceError;

struct Halves {
  std::optional<WindowScreenshotCapture> screenshot;
  std::optional<AccessibilitySnapshot> snapshot;
};

/// Where the two halves of one capture meet. The first failure, or the second success, resolves it.
class CaptureGroup {
 public:
  CaptureGroup(WindowCaptureTarget target, ScreenshotObserver onScreenshot)
      : target_(std::move(target)), onScreenshot_(std::move(onScreenshot)) {}

  void add(WindowScreenshotCapture screenshot) {
    const CapturedWindowMetadata& window = screenshot.window;
    if (window.windowID != target_.windowID || window.processIdentifier != target_.processIdentifier) {
      fail(std::make_exception_ptr(Error(Error::ScreenshotWindowMismatch{
          target_.windowID, window.windowID, target_.processIdentifier, window.processIdentifier})));
      return;
    }
    if (onScreenshot_) onScreenshot_(screenshot);
    add([&] { halves_.screenshot = std::move(screenshot); });
  }

  void add(AccessibilitySnapshot snapshot) {
    add([&] { halves_.snapshot = std::move(snapshot); });
  }

  void fail(std::exception_ptr error) { result_->fail(std::move(error)); }

  const std::shared_ptr<PendingResult<Halves>>& result() const { return result_; }
  const WindowCaptureTarget& target() const { return target_; }

 private:
  template <class Store>
  void add(const Store& store) {
    std::optional<Halves> complete;
    {
      const std::scoped_lock guard(lock_);
      store();
      if (halves_.screenshot && halves_.snapshot) complete = std::move(halves_);
    }
    if (complete) result_->resolve(std::move(*complete));
  }

  WindowCaptureTarget target_;
  ScreenshotObserver onScreenshot_;
  std::mutex lock_;
  Halves halves_;
  std::shared_ptr<PendingResult<Halves>> result_ = std::make_shared<PendingResult<Halves>>();
};

/// What the two halves differ in: how each one's failures are told.
struct ScreenshotHalf {
  using Value = WindowScreenshotCapture;
  using OwnError = WindowScreenshotCaptureError;
  static Error wrap(const OwnError& error) { return Error(Error::Screenshot{error}); }
  static Error timedOut(double seconds) { return Error(Error::ScreenshotTimedOut{seconds}); }
  static Error failure(std::string reason) { return Error(Error::ScreenshotFailure{std::move(reason)}); }
};
struct AccessibilityHalf {
  using Value = AccessibilitySnapshot;
  using OwnError = AccessibilityCaptureError;
  static Error wrap(const OwnError& error) { return Error(Error::Accessibility{error}); }
  static Error timedOut(double seconds) { return Error(Error::AccessibilityTimedOut{seconds}); }
  static Error failure(std::string reason) { return Error(Error::AccessibilityFailure{std::move(reason)}); }
};

template <class Half>
std::exception_ptr mapped(const std::exception_ptr& error, double seconds) {
  try {
    std::rethrow_exception(error);
  } catch (const OperationCancelled&) {
    return error;
  } catch (const AsyncOperationDeadlineError&) {
    return std::make_exception_ptr(Half::timedOut(seconds));
  } catch (const typename Half::OwnError& own) {
    return std::make_exception_ptr(Half::wrap(own));
  } catch (const std::exception& other) {
    return std::make_exception_ptr(Half::failure(other.what()));
  }
}

template <class Half>
Task<> runHalf(std::shared_ptr<CaptureGroup> group, MonotonicClock& clock, TaskExecutor executor, double seconds,
               std::function<Task<typename Half::Value>(WindowCaptureTarget)> operation) {
  std::exception_ptr failure;
  try {
    auto begin = [operation, target = group->target()] { return operation(target); };
    Task<typename Half::Value> bounded = runCancellableAsyncOperation(clock, executor, seconds, std::move(begin));
    group->add(co_await std::move(bounded));
  } catch (...) {
    failure = std::current_exception();
  }
  if (failure) group->fail(mapped<Half>(failure, seconds));
}

ArtifactSource sourceOf(const CapturedWindowMetadata& window) {
  return {window.applicationName, window.bundleIdentifier, window.title, window.frame};
}

void warnOfChange(AccessibilitySnapshot& snapshot, std::string_view what) {
  snapshot.warnings.push_back(fmt::format(
      "The window's {} changed while it was captured; the screenshot and the text may be of different moments.", what));
}

/// Pixels and tree are of different moments; what the window says of itself tells when that shows.
void warnOfChanges(const FrozenContextCaptureTarget& target, const CapturedWindowMetadata& window,
                   AccessibilitySnapshot& snapshot) {
  constexpr double tolerance = 2;
  if (window.title != target.windowTitle.value_or("")) warnOfChange(snapshot, "title");
  const bool isResized = std::abs(window.frame.width - target.windowFrame.width) > tolerance ||
                         std::abs(window.frame.height - target.windowFrame.height) > tolerance;
  if (isResized) warnOfChange(snapshot, "size");
}

}  // namespace

ContextCaptureService::ContextCaptureService(ContextCaptureOperations operations, MonotonicClock& clock,
                                             TaskExecutor executor, ContextCaptureOperationDeadlines deadlines)
    : operations_(std::move(operations)), clock_(clock), executor_(std::move(executor)), deadlines_(deadlines) {}

Task<ContextCaptureResult> ContextCaptureService::captureFrontmostApplication() {
  Task<ContextCaptureResult> capturing = capture(operations_.targetProvider());
  co_return co_await std::move(capturing);
}

Task<ContextCaptureResult> ContextCaptureService::capture(FrozenContextCaptureTarget target,
                                                          ScreenshotObserver onScreenshot) {
  if (target.processIdentifier < 1) throw Error(Error::InvalidFrozenTarget{target.processIdentifier});
  if (target.windowID == 0) throw Error(Error::InvalidFrozenWindow{target.windowID});
  const ContextCapturePermissionState permissions = operations_.permissionProvider();
  if (!permissions.isReady()) throw Error(Error::PermissionsRequired{permissions});

  auto group = std::make_shared<CaptureGroup>(makeWindowCaptureTarget(target), std::move(onScreenshot));
  const TaskHandle screenshot =
      startTask(executor_, [group, &clock = clock_, executor = executor_, seconds = deadlines_.screenshot,
                            operation = operations_.screenshotOperation] {
        return runHalf<ScreenshotHalf>(group, clock, executor, seconds, operation);
      });
  const TaskHandle accessibility =
      startTask(executor_, [group, &clock = clock_, executor = executor_, seconds = deadlines_.accessibility,
                            operation = operations_.accessibilityOperation] {
        return runHalf<AccessibilityHalf>(group, clock, executor, seconds, operation);
      });
  group->result()->whenResolved([screenshot, accessibility] {
    screenshot.cancel();
    accessibility.cancel();
  });

  std::exception_ptr cancellation;
  std::optional<Halves> halves;
  try {
    Task<Halves> waiting = waitFor(group->result());
    halves = co_await std::move(waiting);
  } catch (const OperationCancelled&) {
    cancellation = std::current_exception();
  }
  if (cancellation) {
    group->fail(cancellation);  // ends both halves when it was the caller who was cancelled
    std::rethrow_exception(cancellation);
  }
  if (!halves->screenshot) throw Error(Error::ScreenshotFailure{"The screenshot pipeline finished without a result"});
  if (!halves->snapshot) {
    throw Error(Error::AccessibilityFailure{"The Accessibility pipeline finished without a result"});
  }
  warnOfChanges(target, halves->screenshot->window, *halves->snapshot);
  Task<bool> looking = hasContentChanged(makeWindowCaptureTarget(target), halves->screenshot->fingerprint);
  if (co_await std::move(looking)) warnOfChange(*halves->snapshot, "content");
  ContextCaptureResult result;
  result.source = sourceOf(halves->screenshot->window);
  result.target = std::move(target);
  result.screenshot = std::move(*halves->screenshot);
  result.accessibilitySnapshot = std::move(*halves->snapshot);
  co_return result;
}

Task<bool> ContextCaptureService::hasContentChanged(WindowCaptureTarget target, PictureFingerprint before) {
  if (!operations_.secondLookOperation) co_return false;
  // Below it are blinking carets, clocks and turning wheels; a line of text is above.
  constexpr double noticeableShare = 0.01;
  constexpr double longestLook = 1;
  try {
    auto look = [operation = operations_.secondLookOperation, target] { return operation(target); };
    Task<PictureFingerprint> looking = runCancellableAsyncOperation(clock_, executor_, longestLook, std::move(look));
    co_return changedShare(before, co_await std::move(looking)) > noticeableShare;
  } catch (const OperationCancelled&) {
    throw;
  } catch (const std::exception&) {
    co_return false;  // both halves are there; that the window is gone by now does not make them worse
  }
}

}  // namespace quillo
