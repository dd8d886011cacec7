#include <csignal>
#include <exception>
#include <variant>

#include "CommandOptions.h"
#include "CommandResult.h"
#include "Commands.h"
#include "QuilloCore/Concurrency/OperationCancelled.h"
#include "QuilloLinux/Accessibility/AtspiAccessibilityInterface.h"
#include "QuilloLinux/Desktop/DesktopEntries.h"
#include "QuilloLinux/Windows/X11RunningApplications.h"
#include "QuilloLinux/Windows/X11WindowList.h"

namespace quillo {
namespace {

ApplicationIdentity identityOf(const std::string& windowClass) {
  const auto entry = DesktopEntries::findByWindowClass(windowClass);
  return entry ? ApplicationIdentity{entry->localizedName, entry->id} : ApplicationIdentity{};
}

struct RunCommand {
  CommandEnvironment& environment;

  CommandResult operator()(const SnapshotOptions& options) const { return runSnapshot(options, environment); }
  CommandResult operator()(const ObserveOptions& options) const { return runObserve(options); }
  CommandResult operator()(const RenderOptions& options) const { return runRender(options); }
  CommandResult operator()(const DoctorOptions& /*options*/) const { return runDoctor(environment); }
};

int run(const CommandOptions& command) {
  AtspiAccessibilityInterface accessibility;
  X11WindowList windowList;
  X11RunningApplications applications(identityOf);
  SystemWallClock wallClock;
  CommandEnvironment environment{accessibility, windowList, applications, wallClock};
  try {
    const CommandResult result = std::visit(RunCommand{environment}, command);
    printOutput(result.output + "\n");
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
  if (parsed.command) return run(*parsed.command);
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
