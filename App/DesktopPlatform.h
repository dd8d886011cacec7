#pragma once

#include <filesystem>
#include <memory>

#include "QuilloApp/Services/ApplicationPlatform.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Concurrency/SystemMonotonicClock.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Paste/AccessibilityPasteDestination.h"
#include "QuilloCore/Support/UUID.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"
#include "QuilloLinux/Desktop/AutostartEntry.h"
#include "QuilloLinux/Desktop/GioTrash.h"
#include "QuilloLinux/Desktop/XdgUserDefaults.h"
#include "QuilloLinux/Keyboard/X11HotKeys.h"
#include "QuilloLinux/Keyboard/X11InputFocus.h"
#include "QuilloLinux/Keyboard/X11PasteExclusion.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"
#include "QuilloLinux/Updates/PackageKitUpdates.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo {

/// The adapters of this desktop. Made and ended on the main thread.
class DesktopPlatform {
 public:
  DesktopPlatform(std::filesystem::path libraryPath, TaskExecutor mainExecutor);

  ApplicationPlatform platform();
  const XdgUserDefaults& preferences() const { return preferences_; }

 private:
  std::filesystem::path libraryPath_;
  SystemMonotonicClock clock_;
  SystemWallClock wallClock_;
  RandomUUIDGenerator identifiers_;
  PosixFileSystem fileSystem_;
  GioTrash trash_;
  XdgUserDefaults preferences_;
  AtspiAccessibilityInterface accessibility_;
  std::shared_ptr<X11WindowImage> windowImages_;
  X11WindowList windowList_;
  X11RunningApplications windowOwners_;
  X11RunningApplications frontmostApplications_;
  X11HotKeys hotKeys_;
  X11Pasteboard pasteboard_;
  X11InputFocus inputFocus_;
  AtspiFocusedElement focusedElement_;
  X11PasteKeystroke keystroke_;
  X11PhysicalModifiers modifiers_;
  X11PasteExclusion pasteExclusion_;
  AccessibilityPasteDestination pasteDestination_;
  AutostartEntry loginItem_;
  PackageKitUpdates softwareUpdates_;
};

}  // namespace quillo
