#include "QuilloApp/Services/ApplicationServices.h"

#include <utility>

namespace quillo {

ApplicationServices::ApplicationServices(const ApplicationPlatform& platform, TaskExecutor mainExecutor)
    : platform_(platform),
      mainExecutor_(std::move(mainExecutor)),
      repository_(ArtifactStore(platform.libraryPath, platform.store, ArtifactProjection::standard())),
      capturer_(platform.accessibility, platform.windowList, platform.store.clock),
      screenshots_(platform.windowImages, platform.clock, screenshotQueue_),
      permissions_(platform),
      captureTargets_(platform),
      captureService_(captureOperations(), platform.clock, workers_.makeExecutor()),
      pasteboardSession_(platform.pasteboard, clipboardWriter_),
      modifierReleaseSleeping_(platform.clock),
      pasteDeliveryService_({.pasteboard = pasteboardSession_,
                             .destination = platform.pasteDestination,
                             .modifiers = platform.modifiers,
                             .modifierReleaseSleeping = modifierReleaseSleeping_,
                             .clock = platform.clock,
                             .exclusion = platform.pasteExclusion},
                            mainExecutor_, PasteDeliveryService::Configuration()),
      hotKeys_(platform.hotKeyRegistrar, platform.frontmostApplications),
      libraryMeasuring_(platform.libraryPath) {}

ContextCaptureOperations ApplicationServices::captureOperations() {
  ContextCaptureOperations operations;
  // The model freezes the target itself, before it asks for the capture.
  operations.permissionProvider = [this] { return permissions_.read(); };
  operations.screenshotOperation = [this](WindowCaptureTarget target) {
    return screenshots_.capture(std::move(target));
  };
  operations.accessibilityOperation = [this](WindowCaptureTarget target) {
    return capturer_.capture(platform_.clock, accessibilityQueue_, std::move(target));
  };
  operations.secondLookOperation = [this](WindowCaptureTarget target) {
    return screenshots_.lookAgain(std::move(target));
  };
  return operations;
}

QuilloModelServices ApplicationServices::modelServices(CaptureHeadsUpPanel& captureHUD,
                                                       ArtifactRevealing& fileManager) {
  return {.mainExecutor = mainExecutor_,
          .makeWorkerExecutor = [this] { return workers_.makeExecutor(); },
          .clock = platform_.clock,
          .wallClock = platform_.store.clock,
          .identifiers = platform_.store.identifiers,
          .repository = repository_,
          .preferences = platform_.preferences,
          .captureTargets = captureTargets_,
          .permissions = permissions_,
          .captureService = captureService_,
          .pasteDeliveryService = pasteDeliveryService_,
          .clipboardWriter = clipboardWriter_,
          .pasteboard = platform_.pasteboard,
          .captureHUD = captureHUD,
          .hotKeys = hotKeys_,
          .fileManager = fileManager,
          .loginItem = platform_.loginItem,
          .libraryMeasuring = libraryMeasuring_,
          .softwareUpdates = platform_.softwareUpdates};
}

}  // namespace quillo
