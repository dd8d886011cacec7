#include "QuilloCore/Capture/AccessibilityRootSelection.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "QuilloCore/Capture/AccessibilityAttributeReading.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/AccessibilityStructureReader.h"
#include "QuilloCore/Capture/AccessibilityWindowIdentity.h"
#include "QuilloCore/Capture/AccessibilityWindowMatcher.h"

namespace quillo {
namespace {

std::optional<AccessibilityElement> readElement(AccessibilitySession& session, AccessibilityCaptureState& state,
                                                AccessibilityElement element, std::string_view attribute) {
  const auto value = readAttribute(session, state, element, attribute, std::nullopt);
  const auto* found = value ? std::get_if<AccessibilityElement>(&*value) : nullptr;
  return found == nullptr ? std::nullopt : std::optional(*found);
}

}  // namespace

AccessibilityRoot selectAccessibilityRoot(AccessibilitySession& session, AccessibilityCaptureState& state,
                                          AccessibilityElement application, const WindowCaptureTarget& target) {
  const auto focusedWindow = readElement(session, state, application, "AXFocusedWindow");
  const auto mainWindow = readElement(session, state, application, "AXMainWindow");
  std::vector<AccessibilityElement> windows =
      AccessibilityStructureReader(session, state)
          .elementArray(application, "AXWindows", state.configuration().maximumNodeCount, std::nullopt)
          .members;
  // A dialog that has the focus need not stand in the application's list.
  for (const auto& window : {focusedWindow, mainWindow}) {
    if (window && std::ranges::count(windows, *window) == 0) windows.push_back(*window);
  }

  std::vector<AccessibilityWindowCandidate> candidates;
  candidates.reserve(windows.size());
  for (const AccessibilityElement window : windows) {
    auto identity = AccessibilityWindowIdentity::from(
        readAttributes(session, state, window, AccessibilityWindowIdentity::attributes, std::nullopt));
    candidates.push_back({std::ssize(candidates), identity.windowNumber, identity.frame, std::move(identity.title)});
  }
  auto match = AccessibilityWindowMatcher::match(target, candidates);
  if (!match) {
    throw AccessibilityCaptureError(AccessibilityCaptureError::TargetWindowUnavailable{
        target.processIdentifier, target.windowID, match.error().explanation()});
  }

  AccessibilityRoot root{windows[static_cast<std::size_t>(match->candidate.index)], AccessibilityRootKind::application,
                         std::move(match->note)};
  if (root.element == mainWindow) root.kind = AccessibilityRootKind::mainWindow;
  if (root.element == focusedWindow) root.kind = AccessibilityRootKind::focusedWindow;
  return root;
}

}  // namespace quillo
