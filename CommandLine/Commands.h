#pragma once

#include <memory>
#include <optional>
#include <string>

#include "CommandLibrary.h"
#include "CommandOptions.h"
#include "CommandResult.h"
#include "QuilloCore/Capture/AccessibilityInterface.h"
#include "QuilloCore/Capture/RunningApplicationsProviding.h"
#include "QuilloCore/Capture/WindowImageCapturing.h"
#include "QuilloCore/Capture/WindowListProviding.h"
#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Paste/FocusedElementProviding.h"
#include "QuilloCore/Paste/InputFocusProviding.h"
#include "QuilloCore/Paste/PasteDeliveryExclusion.h"
#include "QuilloCore/Paste/PasteKeystrokeSending.h"
#include "QuilloCore/Paste/PhysicalModifierFlagsProviding.h"
#include "QuilloCore/Support/Clocks.h"
#include "QuilloCore/Support/UUID.h"

namespace quillo {

class BackgroundProcess;

/// The platform as the commands see it; `main` alone knows which adapters stand behind it.
struct CommandEnvironment {
  AccessibilityInterface& accessibility;
  WindowListProviding& windowList;
  RunningApplicationsProviding& applications;
  std::shared_ptr<WindowImageCapturing> windowImages;
  WallClock& wallClock;
  UUIDGenerating& identifiers;
  Pasteboard& pasteboard;
};

/// What a paste needs besides.
struct PasteDevices {
  Pasteboard& pasteboard;
  InputFocusProviding& inputFocus;
  FocusedElementProviding& focusedElement;
  PasteKeystrokeSending& keystroke;
  PhysicalModifierFlagsProviding& modifiers;
  PasteDeliveryExclusion& exclusion;
};

/// Each command throws the typed error of what failed.
CommandResult runSnapshot(const SnapshotOptions& options, CommandEnvironment& environment);
CommandResult runCapture(const CaptureOptions& options, CommandEnvironment& environment, CommandLibrary& library);
CommandResult runObserve(const ObserveOptions& options);
CommandResult runRender(const RenderOptions& options);
/// Becomes the application's program; returns only by throwing.
[[noreturn]] void runApp(const AppOptions& options, const std::optional<std::string>& libraryDirectory);
CommandResult runDoctor(CommandEnvironment& environment);
CommandResult runEvidence(const EvidenceOptions& options);

CommandResult runList(const ListOptions& options, CommandLibrary& library);
CommandResult runShow(const ShowOptions& options, CommandLibrary& library);
/// Stays until another program owns the clipboard; where there is a background process, only that stays.
CommandResult runCopy(const CopyOptions& options, Pasteboard& pasteboard, CommandLibrary& library,
                      BackgroundProcess* background);
/// Prints the outcome's message and lets the caller go on; stays as long as what is on the clipboard is to be served.
CommandResult runPaste(const PasteOptions& options, const PasteDevices& devices, CommandLibrary& library,
                       BackgroundProcess& background);
CommandResult runText(const TextOptions& options, CommandLibrary& library);
CommandResult runEdit(const EditOptions& options, CommandLibrary& library, WallClock& clock);
/// Prints each new place at once, and each failure.
CommandResult runTrash(const TrashOptions& options, CommandLibrary& library);
CommandResult runCheck(const CheckOptions& options, CommandLibrary& library);

}  // namespace quillo
