#include <fmt/format.h>

#include <cstdlib>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Findings.h"
#include "QuilloCore/Capture/WindowScreenshotCaptureError.h"
#include "QuilloLinux/Accessibility/AtspiRegistry.h"
#include "QuilloLinux/Accessibility/AtspiStatus.h"

namespace quillo {
namespace {

bool isSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

std::vector<Finding> examineWindows(CommandEnvironment& environment) {
  try {
    const auto windows = environment.windowList.onScreenFrontToBack();
    const Finding list =
        windows.empty() ? Finding{"Window list", "no windows are open, or no window manager lists them",
                                  "Open an application, under a window manager that keeps _NET_CLIENT_LIST_STACKING."}
                        : Finding{"Window list", fmt::format("{} on the screen", windows.size()), ""};
    return {{"Display server", "X11 answers", ""}, list};
  } catch (const WindowScreenshotCaptureError&) {
    const std::string reason = isSet("DISPLAY") ? "the X11 display does not answer" : "DISPLAY is not set";
    const std::string remedy = isSet("WAYLAND_DISPLAY")
                                   ? "Run quillo where XWayland is available; native Wayland is not supported yet."
                                   : "Run quillo inside a desktop session.";
    return {{"Display server", reason, remedy}};
  }
}

Finding examineScreenshots(CommandEnvironment& environment) {
  if (environment.windowImages->isAllowed()) return {"Screenshot access", "the display hands out single windows", ""};
  return {"Screenshot access", "the display hands out no window's pixels",
          "Use a display server that offers the Composite extension."};
}

Finding examineAccessibility() {
  const AtspiAvailability availability = readAtspiStatus().availability;
  if (availability == AtspiAvailability::available) return {"Accessibility bus", "answers and is switched on", ""};
  return {"Accessibility bus", describe(availability), remedy(availability)};
}

/// The front windows whose applications cannot be captured, because they never came onto the accessibility bus.
std::vector<Finding> examineApplications(CommandEnvironment& environment) {
  std::set<std::int32_t> known;
  for (const AtspiRegisteredApplication& application : readAtspiRegistry()) known.insert(application.processIdentifier);
  std::vector<Finding> findings;
  try {
    for (const WindowListEntry& window : environment.windowList.onScreenFrontToBack()) {
      if (!known.insert(window.processIdentifier).second) continue;
      findings.push_back({"Application",
                          fmt::format("process {} (\"{}\") is not on the accessibility bus", window.processIdentifier,
                                      window.title.value_or("")),
                          "Restart it: some applications look for the accessibility bus only when they start, and "
                          "some never do."});
    }
  } catch (const WindowScreenshotCaptureError&) {
    // Said already where the display server was examined.
  }
  return findings;
}

}  // namespace

CommandResult runDoctor(CommandEnvironment& environment) {
  std::vector<Finding> findings = examineWindows(environment);
  findings.push_back(examineScreenshots(environment));
  findings.push_back(examineAccessibility());
  if (findings.back().isGood()) {
    for (Finding& finding : examineApplications(environment)) findings.push_back(std::move(finding));
  }

  for (Finding& finding : examineClipboard()) findings.push_back(std::move(finding));
  for (Finding& finding : examineKeystrokes()) findings.push_back(std::move(finding));
  for (Finding& finding : examineShortcuts()) findings.push_back(std::move(finding));

  CommandResult result;
  std::string report;
  for (const Finding& finding : findings) {
    if (!report.empty()) report += '\n';
    report += fmt::format("{} {}: {}", finding.isGood() ? "ok     " : "missing", finding.subject, finding.finding);
    if (!finding.isGood()) {
      report += fmt::format("\n        {}", finding.remedy);
      result.exitStatus = ExitStatus::failed;
    }
  }
  result.output = std::move(report);
  return result;
}

}  // namespace quillo
