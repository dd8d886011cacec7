#include "QuilloApp/Model/QuilloModel.h"

#include <utility>

#include "QuilloApp/Model/CaptureFlow.h"
#include "QuilloApp/Model/LibraryFlow.h"
#include "QuilloApp/Model/LoadedArtifactCache.h"
#include "QuilloApp/Model/ModelContext.h"
#include "QuilloApp/Model/PasteFlow.h"
#include "QuilloApp/Model/QuilloUpdateController.h"
#include "QuilloApp/Model/SearchFlow.h"
#include "QuilloApp/Model/SetupFlow.h"
#include "QuilloApp/Model/ShortcutFlow.h"
#include "QuilloApp/Model/TerminationFlow.h"
#include "QuilloApp/Model/TrashFlow.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"

namespace quillo {

struct QuilloModel::Flows {
  explicit Flows(const QuilloModelServices& services) : context(services) {}

  Task<bool> save(SaveFeedback feedback) {
    Task<SaveOutcome> saving = editing.save(feedback);
    const SaveOutcome outcome = co_await std::move(saving);
    co_return outcome == SaveOutcome::saved || outcome == SaveOutcome::nothingToSave;
  }

  ModelContext context;
  LoadedArtifactCache cache;
  EditingFlow editing{context, cache};
  SearchFlow search{context};
  LibraryFlow library{context, cache, editing, search};
  CaptureFlow capture{context, library};
  PasteFlow paste{context, editing};
  TrashFlow trash{context, library, editing};
  SetupFlow setup{context};
  QuilloUpdateController updates{context};
  TerminationFlow termination{context, editing};
  ShortcutFlow shortcuts{
      context,
      {.capture = [this] { capture.captureFrontmostWindow(); },
       .paste = [this](std::optional<std::int32_t> process) { paste.pasteSelectedArtifact(process); }}};
  bool hasStarted = false;
};

QuilloModel::QuilloModel(const QuilloModelServices& services) : flows_(std::make_unique<Flows>(services)) {}

QuilloModel::~QuilloModel() = default;

const QuilloModelState& QuilloModel::state() const {
  return *flows_->context.state;
}

QuilloModelObservation QuilloModel::observe(QuilloModelObserver observer) {
  return flows_->context.state.observe(std::move(observer));
}

void QuilloModel::startIfNeeded() {
  if (std::exchange(flows_->hasStarted, true)) return;
  flows_->shortcuts.start();
  flows_->setup.start();
  flows_->updates.start();
  flows_->context.tasks.start([this] { return flows_->library.start(); });
}

void QuilloModel::reloadArtifacts() {
  flows_->context.tasks.start([this] { return flows_->library.reload(); });
}

void QuilloModel::libraryChanged() {
  flows_->library.libraryChanged();
}

void QuilloModel::select(std::optional<UUID> id) {
  flows_->library.select(id);
}

void QuilloModel::setSearchQuery(std::string query) {
  flows_->search.setQuery(std::move(query));
}

void QuilloModel::setApplicationFilter(std::optional<std::string> application) {
  flows_->search.setApplicationFilter(std::move(application));
}

std::vector<std::size_t> QuilloModel::shownArtifacts() const {
  return flows_->search.shown();
}

std::vector<ApplicationCount> QuilloModel::applicationCounts() const {
  return countApplications(state().artifacts, flows_->search.matching());
}

std::vector<StoredArtifact> QuilloModel::filteredArtifacts() const {
  std::vector<StoredArtifact> artifacts;
  for (const std::size_t index : shownArtifacts()) artifacts.push_back(state().artifacts[index]);
  return artifacts;
}

void QuilloModel::revealSelectedArtifact() {
  const QuilloModelServices& services = flows_->context.services;
  if (const auto& selection = state().selection)
    services.fileManager.reveal(services.repository.bundlePath(*selection));
}

void QuilloModel::moveArtifactsToTrash(std::vector<UUID> ids) {
  flows_->trash.moveArtifactsToTrash(std::move(ids));
}

void QuilloModel::undoMoveToTrash() {
  flows_->trash.undoMoveToTrash();
}

void QuilloModel::setDraftTitle(std::string title) {
  flows_->editing.setDraftTitle(std::move(title));
}

void QuilloModel::setDraftAnnotations(std::string annotations) {
  flows_->editing.setDraftAnnotations(std::move(annotations));
}

void QuilloModel::markEdited() {
  flows_->editing.markEdited();
}

Task<bool> QuilloModel::saveEdits(SaveFeedback feedback) {
  return flows_->context.tasks.spawn([this, feedback] { return flows_->save(feedback); }).value();
}

void QuilloModel::captureFrontmostWindow() {
  flows_->capture.captureFrontmostWindow();
}

void QuilloModel::prepareCaptureTargetForMenu() {
  flows_->capture.prepareCaptureTargetForMenu();
}

void QuilloModel::captureFrontmostWindowFromMenu() {
  flows_->capture.captureFrontmostWindowFromMenu();
}

bool QuilloModel::canCaptureFrontmostWindowFromMenu() const {
  return flows_->capture.canCaptureFrontmostWindowFromMenu();
}

void QuilloModel::preparePasteDestinationForMenu() {
  flows_->paste.preparePasteDestinationForMenu();
}

void QuilloModel::pasteSelectedArtifactFromMenu() {
  flows_->paste.pasteSelectedArtifactFromMenu();
}

bool QuilloModel::canPasteSelectedArtifact() const {
  return flows_->paste.canPasteSelectedArtifact();
}

void QuilloModel::pasteSelectedArtifact(std::optional<std::int32_t> processIdentifier) {
  flows_->paste.pasteSelectedArtifact(processIdentifier);
}

void QuilloModel::copySelectedArtifactToClipboard() {
  flows_->paste.copySelectedArtifactToClipboard();
}

std::expected<void, GlobalHotKeyRegistrationError> QuilloModel::updateHotKeyConfiguration(
    const QuilloHotKeyConfiguration& configuration) {
  return flows_->shortcuts.updateHotKeyConfiguration(configuration);
}

void QuilloModel::beginHotKeyRecording() {
  flows_->shortcuts.beginHotKeyRecording();
}

void QuilloModel::endHotKeyRecording() {
  flows_->shortcuts.endHotKeyRecording();
}

void QuilloModel::recheckCapturePermissions() {
  flows_->setup.recheckCapturePermissions();
}

Task<bool> QuilloModel::requestCapturePermission(ContextCapturePermission permission) {
  return flows_->context.tasks.spawn([this, permission] { return flows_->setup.requestCapturePermission(permission); })
      .value();
}

void QuilloModel::refreshSettings() {
  flows_->setup.refreshSettings();
}

void QuilloModel::setStartsAtLogin(bool startsAtLogin) {
  flows_->setup.setStartsAtLogin(startsAtLogin);
}

void QuilloModel::revealLibrary() {
  flows_->context.services.fileManager.reveal(libraryPath());
}

std::filesystem::path QuilloModel::libraryPath() const {
  return flows_->context.services.libraryMeasuring.libraryPath();
}

QuilloUpdateController& QuilloModel::updates() {
  return flows_->updates;
}

bool QuilloModel::isOnboardingCompleted() const {
  return flows_->setup.isOnboardingCompleted();
}

void QuilloModel::showOnboarding() {
  flows_->setup.showOnboarding();
}

void QuilloModel::hideOnboarding() {
  flows_->setup.hideOnboarding();
}

void QuilloModel::completeOnboarding() {
  flows_->setup.completeOnboarding();
}

Task<bool> QuilloModel::prepareForTermination() {
  return flows_->context.tasks.spawn([this] { return flows_->termination.prepareForTermination(); }).value();
}

void QuilloModel::resumeAfterTermination() {
  flows_->context.isTerminating = false;
}

Task<> QuilloModel::shutDown() {
  ModelContext& context = flows_->context;
  context.isTerminating = true;
  context.services.hotKeys.whenLost({});
  context.services.hotKeys.unregisterAll();
  context.flights.cancelAll();
  context.tasks.cancelAll();
  for (TaskGroup* group : {&context.flights, &context.tasks}) {
    Task<> ending = group->whenEmpty();
    co_await std::move(ending);
  }
}

}  // namespace quillo
