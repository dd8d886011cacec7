#pragma once

#include <filesystem>
#include <memory>

#include "QuilloCore/Artifacts/ArtifactStore.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"
#include "QuilloCore/Capture/RunningApplicationsProviding.h"
#include "QuilloCore/Capture/WindowImageCapturing.h"
#include "QuilloCore/Capture/WindowListProviding.h"
#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Paste/PasteDeliveryExclusion.h"
#include "QuilloCore/Paste/PasteDestination.h"
#include "QuilloCore/Paste/PhysicalModifierFlagsProviding.h"
#include "QuilloCore/Preferences/LoginItem.h"
#include "QuilloCore/Preferences/UserDefaults.h"
#include "QuilloCore/Shortcuts/HotKeyRegistering.h"
#include "QuilloCore/Updates/SoftwareUpdateService.h"

namespace quillo {

/// The desktop as the application sees it; `main` alone knows which adapters stand behind it. Everything outlives the
/// application's services.
struct ApplicationPlatform {
  MonotonicClock& clock;
  std::filesystem::path libraryPath;
  ArtifactStore::Services store;  ///< used by the library's thread, and its wall clock by several
  UserDefaults& preferences;

  // Asked on queues, from several threads.
  AccessibilityInterface& accessibility;
  std::shared_ptr<WindowImageCapturing> windowImages;
  WindowListProviding& windowList;

  // Asked on one queue.
  RunningApplicationsProviding& windowOwners;
  ExcludedApplication ownApplication;  ///< which is never captured

  // Asked on the main thread.
  RunningApplicationsProviding& frontmostApplications;
  HotKeyRegistering& hotKeyRegistrar;
  Pasteboard& pasteboard;
  PasteDestination& pasteDestination;
  PhysicalModifierFlagsProviding& modifiers;
  LoginItem& loginItem;
  SoftwareUpdateService& softwareUpdates;
  PasteDeliveryExclusion* pasteExclusion = nullptr;  ///< as in PasteDeliveryService
};

}  // namespace quillo
