#pragma once

#include <filesystem>
#include <functional>

#include "QuilloCore/Artifacts/LibraryUsage.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Capture/FrozenContextCaptureTarget.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Support/Clocks.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

class ArtifactRepository;
class CaptureHeadsUpPanel;
class ClipboardPayloadWriter;
class ContextCaptureService;
class GlobalHotKeyController;
class LoginItem;
class PasteDeliveryService;
class Pasteboard;
class SoftwareUpdateService;
class UserDefaults;

/// Freezes the window that the user is looking at. Asked as soon as the user asks for a capture; the answer may take
/// its time, but what is frozen is what was in front when the question came.
class CaptureTargetFreezing {
 public:
  virtual ~CaptureTargetFreezing() = default;

  /// Throws ContextCaptureServiceError (noFrontmostNonQuilloApplication), among others.
  virtual Task<FrozenContextCaptureTarget> freezeCaptureTarget() = 0;
};

/// What the desktop lets us read.
class CapturePermissions {
 public:
  virtual ~CapturePermissions() = default;

  /// Asks the user nothing. Does not throw.
  virtual Task<ContextCapturePermissionState> state() = 0;

  /// Has the desktop ask the user, or shows where it is granted. Returns whether it is granted now; does not throw.
  virtual Task<bool> request(ContextCapturePermission permission) = 0;
};

/// Shows a bundle in the desktop's file manager.
class ArtifactRevealing {
 public:
  virtual ~ArtifactRevealing() = default;
  virtual void reveal(const std::filesystem::path& bundlePath) = 0;
};

/// Where the captures lie and what they take.
class LibraryMeasuring {
 public:
  virtual ~LibraryMeasuring() = default;

  virtual std::filesystem::path libraryPath() const = 0;
  /// Reads every bundle's directory, away from the main thread. Does not throw: what cannot be read counts nothing.
  virtual Task<LibraryUsage> measure() = 0;
};

/// What the model works with. Everything outlives the model, and is called on the main thread.
struct QuilloModelServices {
  TaskExecutor mainExecutor;                         ///< the application's event loop
  std::function<TaskExecutor()> makeWorkerExecutor;  ///< a new queue for one long computation, never the main one
  MonotonicClock& clock;
  WallClock& wallClock;
  UUIDGenerating& identifiers;
  ArtifactRepository& repository;
  UserDefaults& preferences;
  CaptureTargetFreezing& captureTargets;
  CapturePermissions& permissions;
  ContextCaptureService& captureService;
  PasteDeliveryService& pasteDeliveryService;
  ClipboardPayloadWriter& clipboardWriter;
  Pasteboard& pasteboard;
  CaptureHeadsUpPanel& captureHUD;
  GlobalHotKeyController& hotKeys;
  ArtifactRevealing& fileManager;
  LoginItem& loginItem;
  LibraryMeasuring& libraryMeasuring;
  SoftwareUpdateService& softwareUpdates;
};

}  // namespace quillo
