#include <csignal>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "BackgroundProcess.h"
#include "CommandLibrary.h"
#include "CommandOptions.h"
#include "CommandResult.h"
#include "Commands.h"
#include "QuilloCore/Artifacts/PosixFileSystem.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloCore/Support/UUID.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Accessibility/AtspiFocusedElement.h"
#include "QuilloLinux/Clipboard/X11Pasteboard.h"
#include "QuilloLinux/Desktop/DesktopEntries.h"
#include "QuilloLinux/Desktop/GioTrash.h"
#include "QuilloLinux/Keyboard/X11InputFocus.h"
#include "QuilloLinux/Keyboard/X11PasteExclusion.h"
#include "QuilloLinux/Keyboard/X11PasteKeystroke.h"
#include "QuilloLinux/Keyboard/X11PhysicalModifiers.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowImage.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo {
namespace {

ApplicationIdentity identityOf(const std::string& windowClass) {
  const auto entry = DesktopEntries::findByWindowClass(windowClass);
  return entry ? ApplicationIdentity{entry->localizedName, entry->id} : ApplicationIdentity{};
}

/// Calls `command(library)` with the library that the user has named, or the user's own.
CommandResult withLibrary(const std::optional<std::string>& directory, WallClock& clock,
                          const std::function<CommandResult(CommandLibrary&)>& command) {
  PosixFileSystem fileSystem;
  GioTrash trash;
  RandomUUIDGenerator identifiers;
  CommandLibrary library(directory, fileSystem, {fileSystem, trash, clock, identifiers});
  return command(library);
}

class RunCommand {
 public:
  RunCommand(CommandEnvironment& environment, const std::optional<std::string>& libraryDirectory)
      : environment_(environment), libraryDirectory_(libraryDirectory) {}

  CommandResult operator()(const AppOptions& options) const { runApp(options, libraryDirectory_); }
  CommandResult operator()(const SnapshotOptions& options) const { return runSnapshot(options, environment_); }
  CommandResult operator()(const CaptureOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runCapture(options, environment_, library); });
  }
  CommandResult operator()(const ObserveOptions& options) const { return runObserve(options); }
  CommandResult operator()(const RenderOptions& options) const { return runRender(options); }
  CommandResult operator()(const DoctorOptions& /*options*/) const { return runDoctor(environment_); }
  CommandResult operator()(const EvidenceOptions& options) const { return runEvidence(options); }

  CommandResult operator()(const ListOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runList(options, library); });
  }
  CommandResult operator()(const ShowOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runShow(options, library); });
  }
  CommandResult operator()(const TextOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runText(options, library); });
  }
  CommandResult operator()(const CopyOptions& options) const {
    if (!options.runsInBackground) return copy(options, nullptr);
    return BackgroundProcess::run([&](BackgroundProcess& background) { return copy(options, &background); });
  }
  CommandResult operator()(const PasteOptions& options) const {
    return BackgroundProcess::run([&](BackgroundProcess& background) {
      X11InputFocus inputFocus;
      AtspiFocusedElement focusedElement;
      X11PasteKeystroke keystroke;
      X11PhysicalModifiers modifiers;
      X11PasteExclusion exclusion;
      const PasteDevices devices{environment_.pasteboard, inputFocus, focusedElement, keystroke, modifiers, exclusion};
      return onLibrary([&](CommandLibrary& library) { return runPaste(options, devices, library, background); });
    });
  }
  CommandResult operator()(const EditOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runEdit(options, library, environment_.wallClock); });
  }
  CommandResult operator()(const TrashOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runTrash(options, library); });
  }
  CommandResult operator()(const CheckOptions& options) const {
    return onLibrary([&](CommandLibrary& library) { return runCheck(options, library); });
  }

 private:
  CommandResult copy(const CopyOptions& options, BackgroundProcess* background) const {
    return onLibrary(
        [&](CommandLibrary& library) { return runCopy(options, environment_.pasteboard, library, background); });
  }

  CommandResult onLibrary(const std::function<CommandResult(CommandLibrary&)>& command) const {
    return withLibrary(libraryDirectory_, environment_.wallClock, command);
  }

  CommandEnvironment& environment_;
  const std::optional<std::string>& libraryDirectory_;
};

int run(const CommandOptions& command, const std::optional<std::string>& libraryDirectory) {
  AtspiAccessibilityInterface accessibility;
  X11WindowList windowList;
  X11RunningApplications applications(identityOf);
  SystemWallClock wallClock;
  RandomUUIDGenerator identifiers;
  X11Pasteboard pasteboard;
  CommandEnvironment environment{accessibility, windowList,  applications, std::make_shared<X11WindowImage>(identityOf),
                                 wallClock,     identifiers, pasteboard};
  try {
    const CommandResult result = std::visit(RunCommand(environment, libraryDirectory), command);
    if (result.output) printOutput(*result.output + "\n");
    return result.exitStatus;
  } catch (const OperationCancelled&) {
    return ExitStatus::interrupted;
  } catch (const std::exception& error) {
    printError(error);
    return ExitStatus::failed;
  }
}

int runMain(int argumentCount, const char* const* arguments) {
  // A reader that has gone away is an error like any other, reported by its own name.
  std::signal(SIGPIPE, SIG_IGN);
  const ParsedCommandLine parsed = parseCommandLine(argumentCount, arguments);
  if (parsed.command) return run(*parsed.command, parsed.library);
  try {
    printOutput(parsed.output);
  } catch (const StreamError& error) {
    printError(error);
    return ExitStatus::failed;
  }
  if (!parsed.error.empty()) printError(parsed.error);
  return parsed.exitStatus;
}

}  // namespace
}  // namespace quillo

int main(int argumentCount, char** arguments) {
  return quillo::runMain(argumentCount, arguments);
}
