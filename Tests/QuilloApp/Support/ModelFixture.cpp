#include "ModelFixture.h"

#include <algorithm>
#include <chrono>

#include "QuilloCore/Semantics/InterfaceObservationProcessor.h"
#include "Tests/Support/CaptureOfLetter.h"
#include "Tests/Support/SnapshotBuilder.h"

namespace quillo::test {
FakeCaptureTargets::FakeCaptureTargets() : answer(frozenLetter()) {}

Task<bool> FakePermissions::request(ContextCapturePermission permission) {
  if (isRefusing) co_return false;
  (permission == ContextCapturePermission::accessibility ? granted.accessibilityGranted
                                                         : granted.screenRecordingGranted) = true;
  co_return true;
}

ModelFixture::ModelFixture()
    : screenshot(screenshotOfLetter()), snapshot(makeSnapshot("window 'Letter'\n  button 'Send'")) {
  trash.action = [this](const std::filesystem::path& path) {
    if (std::ranges::find(immovable, path.filename().string()) != immovable.end())
      throw TrashError("it is nailed down");
    const std::filesystem::path trashed = trashFolder.path() / path.filename();
    std::filesystem::rename(path, trashed);
    return trashTellsPlace ? std::optional(trashed) : std::nullopt;
  };
  ContextCaptureOperations operations;
  operations.permissionProvider = [this] { return permissions.granted; };
  operations.screenshotOperation = [this](const WindowCaptureTarget& /*target*/) { return screenshot.give(); };
  operations.accessibilityOperation = [this](const WindowCaptureTarget& /*target*/) { return snapshot.give(); };
  captureService = std::make_unique<ContextCaptureService>(operations, clock, loop.executor());
  delivery = std::make_unique<PasteDeliveryService>(
      PasteDeliveryService::Collaborators{session, destination, modifiers, sleeping, clock}, loop.executor(),
      PasteDeliveryService::Configuration{
          .clipboardReadinessDelay = 0, .imageIngestionDelay = 0, .finalIngestionDelay = 0});
  model = std::make_unique<QuilloModel>(QuilloModelServices{
      .mainExecutor = loop.executor(),
      .makeWorkerExecutor =
          [this] { return std::exchange(nextWorkerIsStuck, false) ? stuck.executor() : loop.executor(); },
      .clock = clock,
      .wallClock = wallClock,
      .identifiers = identifiers,
      .repository = repository,
      .preferences = preferences,
      .captureTargets = captureTargets,
      .permissions = permissions,
      .captureService = *captureService,
      .pasteDeliveryService = *delivery,
      .clipboardWriter = writer,
      .pasteboard = pasteboard,
      .captureHUD = panel,
      .hotKeys = hotKeys,
      .fileManager = fileManager,
      .loginItem = loginItem,
      .libraryMeasuring = libraryMeasuring,
      .softwareUpdates = softwareUpdates,
  });
}

ModelFixture::~ModelFixture() {
  await(model->shutDown());
  loop.runReady();
  stuck.runReady();
}

UUID ModelFixture::store(const std::string& title, int minutesAgo, const std::string& windowTitle) {
  ContextArtifactDraft draft;
  draft.manifest.id = identifiers.makeUUID();
  draft.manifest.title = title;
  draft.manifest.createdAt = wallClock.present - std::chrono::minutes(minutesAgo);
  draft.manifest.modifiedAt = draft.manifest.createdAt;
  draft.manifest.source = {"Editor", std::nullopt, windowTitle, std::nullopt};
  draft.screenshotPNG = "png of " + title;
  draft.accessibilitySnapshot = makeSnapshot("window 'Letter'");
  draft.interfaceObservation = ArtifactProjection::standard().makeObservation(draft.accessibilitySnapshot);
  return outsideStore.create(draft).manifest.id;
}

UUID ModelFixture::storeOf(const std::string& application, const std::string& title, int minutesAgo) {
  const UUID id = store(title, minutesAgo);
  const StoredArtifact stored = outsideStore.load(id).stored;
  ArtifactManifest manifest = stored.manifest;
  manifest.source.applicationName = application;
  outsideStore.update(stored, manifest);
  return id;
}

void ModelFixture::editFromOutside(const UUID& id, const std::string& title, const std::string& annotations) {
  const StoredArtifact stored = outsideStore.load(id).stored;
  ArtifactManifest manifest = stored.manifest;
  manifest.title = title;
  manifest.annotations = annotations;
  manifest.modifiedAt += std::chrono::minutes(1);
  outsideStore.update(stored, manifest);
}

void ModelFixture::start() {
  model->startIfNeeded();
  settle();
}

void ModelFixture::select(const UUID& id) {
  model->select(id);
  settle();
}

void ModelFixture::settle() {
  // A flow takes turns with the repository's thread; no flow takes as many as this.
  constexpr int turns = 8;
  for (int turn = 0; turn < turns; ++turn) {
    loop.runReady();
    [[maybe_unused]] const auto listed = await(outcomeOf(repository.list(ListingDetail::withoutContextTexts)));
  }
  loop.runReady();
}

void ModelFixture::advance(double seconds) {
  loop.runReady();
  clock.advance(seconds);
  settle();
}

std::string ModelFixture::activity() {
  switch (const Activity& activity = state().activity; activity.kind) {
    case Activity::Kind::idle: return "idle";
    case Activity::Kind::loading: return "loading";
    case Activity::Kind::capturing: return "capturing";
    case Activity::Kind::saving: return "saving";
    case Activity::Kind::pasting: return "pasting";
    case Activity::Kind::success: return "success: " + activity.message;
    case Activity::Kind::failure: return "failure: " + activity.message;
  }
  return {};
}

std::vector<std::string> ModelFixture::titlesOf(const std::vector<StoredArtifact>& artifacts) {
  std::vector<std::string> titles;
  titles.reserve(artifacts.size());
  for (const StoredArtifact& artifact : artifacts) titles.push_back(artifact.manifest.title);
  return titles;
}

}  // namespace quillo::test
