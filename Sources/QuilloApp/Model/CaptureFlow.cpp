#include "QuilloApp/Model/CaptureFlow.h"

#include <utility>

#include "QuilloApp/Model/CaptureSummary.h"
#include "QuilloApp/Model/FailureText.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Artifacts/ContextArtifactDraftMaker.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Capture/ContextCaptureServiceError.h"
#include "QuilloCore/Concurrency/SpawnedTask.h"

namespace quillo {
namespace {

using State = QuilloModelState;

constexpr const char* openMenuFromWindow =
    "Open the Quillo menu from the window you want to capture, then choose Capture";

bool isAboutPermissions(const ContextCaptureServiceError& error) {
  if (std::holds_alternative<ContextCaptureServiceError::PermissionsRequired>(error.value())) return true;
  const auto* screenshot = std::get_if<ContextCaptureServiceError::Screenshot>(&error.value());
  return screenshot != nullptr &&
         std::holds_alternative<WindowScreenshotCaptureError::ScreenRecordingPermissionRequired>(
             screenshot->error.value());
}

Task<ContextArtifactDraft> captureAndRender(ContextCaptureService& service, MonotonicClock& clock,
                                            TaskExecutor rendering, FrozenContextCaptureTarget target,
                                            ScreenshotObserver onScreenshot, UUID id) {
  Task<ContextCaptureResult> capturing = service.capture(std::move(target), std::move(onScreenshot));
  ContextCaptureResult result = co_await std::move(capturing);
  Task<ContextArtifactDraft> making =
      ContextArtifactDraftMaker::make(clock, std::move(rendering), std::move(result), id);
  co_return co_await std::move(making);
}

}  // namespace

CaptureFlow::CaptureFlow(ModelContext& context, LibraryFlow& library) : context_(context), library_(library) {}

void CaptureFlow::captureFrontmostWindow() {
  if (!canCaptureFrontmostWindowFromMenu()) return;
  start(freezeCaptureTarget(), false);
}

void CaptureFlow::prepareCaptureTargetForMenu() {
  menuCaptureResolution_.reset();
  if (canCaptureFrontmostWindowFromMenu()) menuCaptureResolution_ = freezeCaptureTarget();
}

void CaptureFlow::captureFrontmostWindowFromMenu() {
  if (!canCaptureFrontmostWindowFromMenu()) return;
  const std::optional<Resolution> resolution = std::exchange(menuCaptureResolution_, std::nullopt);
  if (!resolution) {
    show({openMenuFromWindow, {}, {}}, openMenuFromWindow);
    return;
  }
  start(*resolution, true);
}

CaptureFlow::Resolution CaptureFlow::freezeCaptureTarget() {
  return context_.tasks.spawn([this] { return context_.services.captureTargets.freezeCaptureTarget(); });
}

void CaptureFlow::start(const Resolution& resolution, bool isFromMenu) {
  captureIsInProgress_ = true;
  context_.activity.begin(Activity::Kind::capturing);
  context_.flights.start([this, resolution, isFromMenu] { return run(resolution, isFromMenu); });
}

Task<> CaptureFlow::run(Resolution resolution, bool isFromMenu) {
  Task<Outcome<void>> capturing = outcomeOf(capture(std::move(resolution), isFromMenu));
  const Outcome<void> outcome = co_await std::move(capturing);
  // The slot is free again before the outcome is told, so that whoever sees it may ask for the next capture.
  captureIsInProgress_ = false;
  if (!outcome) reportCaptureFailure(outcome.error());
  activeCaptureTarget_.reset();
}

Task<> CaptureFlow::capture(Resolution resolution, bool isFromMenu) {
  Task<Outcome<Target>> freezing = outcomeOf(resolution.value());
  Outcome<Target> frozen = co_await std::move(freezing);
  if (!frozen) {
    rethrowCancellation(frozen.error());
    if (!isFromMenu) std::rethrow_exception(frozen.error());
    show({openMenuFromWindow, {}, {}}, openMenuFromWindow);
    co_return;
  }
  activeCaptureTarget_ = *frozen;
  auto notice = std::make_shared<CaptureNotice>();
  notice->title = frozen->windowTitle.value_or("").empty() ? frozen->applicationName : *frozen->windowTitle;
  notice->applicationName = frozen->applicationName;
  notice->windowFrame = frozen->windowFrame;

  Task<ContextArtifactDraft> making = makeDraft(std::move(*frozen), notice);
  ContextArtifactDraft draft = co_await std::move(making);
  CaptureNotice done = *notice;
  notice.reset();
  done.title = draft.manifest.title;
  done.detail = captureSummary(draft.accessibilitySnapshot);
  if (!done.screenshotPNG) done.screenshotPNG = std::make_shared<const std::string>(draft.screenshotPNG);
  Task<StoredArtifact> creating = context_.services.repository.create(std::move(draft));
  const StoredArtifact stored = co_await std::move(creating);
  Task<> reloading = library_.reload();
  co_await std::move(reloading);
  library_.select(stored.manifest.id);

  captureIsInProgress_ = false;
  context_.activity.show(Activity::success("Capture saved to the library"), hidingPanel());
  context_.services.captureHUD.showSuccess(done);
}

Task<ContextArtifactDraft> CaptureFlow::makeDraft(Target target, std::shared_ptr<CaptureNotice> notice) {
  const QuilloModelServices& services = context_.services;
  // Asking for permissions and copying a large tree would hold up the main thread, and rendering it whatever waits for
  // its deadline: each has its own queue.
  const TaskExecutor rendering = services.makeWorkerExecutor();
  auto capture = [&service = services.captureService, &clock = services.clock, rendering, target = std::move(target),
                  id = services.identifiers.makeUUID(), onScreenshot = showProgressWhenPixelsAreThere(notice)] {
    return captureAndRender(service, clock, rendering, target, onScreenshot, id);
  };
  const auto making = spawnTask(services.makeWorkerExecutor(), std::move(capture));
  Task<Outcome<ContextArtifactDraft>> waiting = outcomeOf(making.value());
  Outcome<ContextArtifactDraft> made = co_await std::move(waiting);
  if (made) co_return std::move(*made);
  making.cancel();
  std::rethrow_exception(made.error());
}

ScreenshotObserver CaptureFlow::showProgressWhenPixelsAreThere(const std::shared_ptr<CaptureNotice>& notice) {
  // The notice lives as long as there is progress to show.
  return [panel = &context_.services.captureHUD, notice = std::weak_ptr(notice),
          main = context_.services.mainExecutor.queue()](const WindowScreenshotCapture& screenshot) {
    auto png = std::make_shared<const std::string>(screenshot.pngData);
    main->post([panel, notice, png] {
      const auto running = notice.lock();
      if (!running) return;
      running->screenshotPNG = png;
      panel->showProgress(*running);
    });
  };
}

void CaptureFlow::reportCaptureFailure(const std::exception_ptr& error) {
  CaptureFailureNotice notice;
  if (activeCaptureTarget_) notice.windowFrame = activeCaptureTarget_->windowFrame;
  notice.message = failureText(error);
  std::string message = notice.message;
  try {
    std::rethrow_exception(error);
  } catch (const ContextCaptureServiceError& failure) {
    notice.remedy = failure.recoverySuggestion();
    if (isAboutPermissions(failure) && notice.remedy) message += " " + *notice.remedy;
    if (const auto* required = std::get_if<ContextCaptureServiceError::PermissionsRequired>(&failure.value())) {
      context_.state.set<&State::capturePermissionState>(required->state);
    }
  } catch (const std::exception&) {
    // Has no remedy.
  }
  show(notice, std::move(message));
}

void CaptureFlow::show(const CaptureFailureNotice& notice, std::string message) {
  context_.activity.show(Activity::failure(std::move(message)), hidingPanel());
  context_.services.captureHUD.showFailure(notice);
}

/// The panel stays as long as the message does. A new message is shown first, because the one before it takes its panel
/// away as it goes.
std::function<void()> CaptureFlow::hidingPanel() const {
  return [panel = &context_.services.captureHUD] { panel->hide(); };
}

}  // namespace quillo
