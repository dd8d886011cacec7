#pragma once

#include "QuilloApp/Model/QuilloModelServices.h"
#include "QuilloApp/Services/ApplicationPlatform.h"
#include "QuilloApp/Services/QueuedCapturePermissions.h"
#include "QuilloApp/Services/QueuedCaptureTargets.h"
#include "QuilloApp/Services/QueuedLibraryMeasuring.h"
#include "QuilloCore/Artifacts/ArtifactRepository.h"
#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloCore/Capture/ContextCaptureService.h"
#include "QuilloCore/Capture/FrontmostWindowScreenshotCapturer.h"
#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/SystemPasteboardSession.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/WorkerPool.h"
#include "QuilloCore/Paste/ModifierReleaseSleeping.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"
#include "QuilloCore/Shortcuts/GlobalHotKeyController.h"

namespace quillo {

/// Everything that the application's model works with, made from the platform. Made and ended on the main thread, after
/// the model; its end waits for what its queues have begun.
class ApplicationServices {
 public:
  ApplicationServices(const ApplicationPlatform& platform, TaskExecutor mainExecutor);

  QuilloModelServices modelServices(CaptureHeadsUpPanel& captureHUD, ArtifactRevealing& fileManager);

  ArtifactRepository& repository() { return repository_; }
  WorkerPool& workers() { return workers_; }

 private:
  ContextCaptureOperations captureOperations();

  ApplicationPlatform platform_;
  TaskExecutor mainExecutor_;
  ArtifactRepository repository_;

  // The queues end before what is used on them.
  AccessibilityContextCapturer capturer_;
  SerialQueue screenshotQueue_{"org.quillo.Quillo.screenshot"};
  SerialQueue accessibilityQueue_{"org.quillo.Quillo.accessibility-capture"};
  FrontmostWindowScreenshotCapturer screenshots_;
  QueuedCapturePermissions permissions_;
  QueuedCaptureTargets captureTargets_;
  WorkerPool workers_;
  ContextCaptureService captureService_;

  ClipboardPayloadWriter clipboardWriter_;
  SystemPasteboardSession pasteboardSession_;
  ClockModifierReleaseSleeping modifierReleaseSleeping_;
  PasteDeliveryService pasteDeliveryService_;
  GlobalHotKeyController hotKeys_;
  QueuedLibraryMeasuring libraryMeasuring_;
};

}  // namespace quillo
