#include <unistd.h>

#include <memory>

#include "Commands.h"
#include "QuilloCore/Capture/AccessibilityContextCapturer.h"
#include "QuilloCore/Capture/FocusedAccessibilityWindowHintReader.h"
#include "QuilloCore/Capture/FrontmostContextCaptureTargetResolver.h"
#include "QuilloCore/Concurrency/TerminationSignals.h"

namespace quillo {

CommandResult runSnapshot(const SnapshotOptions& options, CommandEnvironment& environment) {
  const AccessibilityCaptureConfiguration configuration;
  const auto control = std::make_shared<AccessibilityCaptureControl>(configuration.captureTimeout);
  const TerminationSignals signals([control] { control->cancel(); });

  FocusedAccessibilityWindowHintReader hintReader(environment.accessibility);
  FrontmostContextCaptureTargetResolver resolver(environment.windowList, environment.applications, hintReader,
                                                 environment.wallClock,
                                                 {.processIdentifier = ::getpid(), .bundleIdentifier = {}});
  const FrozenContextCaptureTarget target =
      options.windowNumber ? resolver.resolveWindow(*options.windowNumber) : resolver.resolve();
  AccessibilityContextCapturer capturer(environment.accessibility, environment.windowList, environment.wallClock,
                                        configuration);
  const AccessibilitySnapshot snapshot = capturer.captureSynchronously(makeWindowCaptureTarget(target), control);
  return {encodeJson(snapshot, JsonStyle::prettyPrinted)};
}

}  // namespace quillo
