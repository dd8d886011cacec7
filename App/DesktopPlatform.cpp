#include "DesktopPlatform.h"

#include <unistd.h>

#include <string>
#include <utility>

#include "QuilloLinux/Desktop/DesktopEntries.h"

namespace quillo {
namespace {

ApplicationIdentity identityOf(const std::string& windowClass) {
  const auto entry = DesktopEntries::findByWindowClass(windowClass);
  return entry ? ApplicationIdentity{entry->localizedName, entry->id} : ApplicationIdentity{};
}

std::filesystem::path ownProgram() {
  return std::filesystem::read_symlink("/proc/self/exe");
}

}  // namespace

DesktopPlatform::DesktopPlatform(std::filesystem::path libraryPath, TaskExecutor mainExecutor)
    : libraryPath_(std::move(libraryPath)),
      preferences_(fileSystem_, identifiers_),
      windowImages_(std::make_shared<X11WindowImage>(identityOf)),
      windowOwners_(identityOf),
      frontmostApplications_(identityOf),
      hotKeys_(std::move(mainExecutor)),
      pasteDestination_({inputFocus_, focusedElement_, keystroke_, clock_}),
      loginItem_(fileSystem_, identifiers_, ownProgram()),
      softwareUpdates_({.program = ownProgram().string(), .busAddress = {}, .limits = {}}) {}

ApplicationPlatform DesktopPlatform::platform() {
  return {.clock = clock_,
          .libraryPath = libraryPath_,
          .store = {fileSystem_, trash_, wallClock_, identifiers_},
          .preferences = preferences_,
          .accessibility = accessibility_,
          .windowImages = windowImages_,
          .windowList = windowList_,
          .windowOwners = windowOwners_,
          .ownApplication = {.processIdentifier = ::getpid(), .bundleIdentifier = "org.quillo.Quillo"},
          .frontmostApplications = frontmostApplications_,
          .hotKeyRegistrar = hotKeys_,
          .pasteboard = pasteboard_,
          .pasteDestination = pasteDestination_,
          .modifiers = modifiers_,
          .loginItem = loginItem_,
          .softwareUpdates = softwareUpdates_,
          .pasteExclusion = &pasteExclusion_};
}

}  // namespace quillo
