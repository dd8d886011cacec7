#include "QuilloCore/Artifacts/ContextArtifactDraftMaker.h"

#include <string>
#include <utility>

#include "QuilloCore/Semantics/InterfaceObservationProcessor.h"

namespace quillo {
namespace {

ArtifactManifest makeManifest(const ContextCaptureResult& capture, std::string contextText, const UUID& id) {
  ArtifactManifest manifest;
  manifest.id = id;
  const bool hasTitle = !capture.source.windowTitle.empty();
  manifest.title = hasTitle ? capture.source.windowTitle : capture.source.applicationName;
  manifest.createdAt = capture.target.frozenAt;
  manifest.modifiedAt = capture.target.frozenAt;
  manifest.source = capture.source;
  manifest.contextText = std::move(contextText);
  manifest.contextProjectionVersion = ArtifactManifest::currentContextProjectionVersion;
  manifest.nodeCount = capture.accessibilitySnapshot.nodeCount;
  manifest.characterCount = capture.accessibilitySnapshot.characterCount;
  return manifest;
}

}  // namespace

Task<ContextArtifactDraft> ContextArtifactDraftMaker::make(MonotonicClock& clock, TaskExecutor executor,
                                                           ContextCaptureResult capture, UUID id) {
  Task<ProcessedInterfaceObservation> processing =
      InterfaceObservationProcessor::process(clock, std::move(executor), capture.accessibilitySnapshot);
  ProcessedInterfaceObservation processed = co_await std::move(processing);
  ContextArtifactDraft draft;
  draft.manifest = makeManifest(capture, std::move(processed.contextText), id);
  draft.screenshotPNG = std::move(capture.screenshot.pngData);
  draft.accessibilitySnapshot = std::move(capture.accessibilitySnapshot);
  draft.interfaceObservation = std::move(processed.observation);
  co_return draft;
}

}  // namespace quillo
