#include "QuilloCore/Capture/AccessibilitySnapshotCapture.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "QuilloCore/Capture/AccessibilityAreaCoverage.h"
#include "QuilloCore/Capture/AccessibilityAttributeReading.h"
#include "QuilloCore/Capture/AccessibilityCaptureError.h"
#include "QuilloCore/Capture/AccessibilityCaptureState.h"
#include "QuilloCore/Capture/AccessibilityDocumentText.h"
#include "QuilloCore/Capture/AccessibilityRootSelection.h"
#include "QuilloCore/Capture/AccessibilityTreeWalk.h"
#include "QuilloCore/Capture/AccessibilityWindowMatcher.h"
#include "QuilloCore/Capture/CheckpointingSession.h"

namespace quillo {
namespace {

AccessibilityElement connect(AccessibilitySession& session, std::int32_t processIdentifier) {
  const auto application = session.applicationElement(processIdentifier);
  if (application && session.processIdentifier(*application) == processIdentifier) return *application;
  throw AccessibilityCaptureError(AccessibilityCaptureError::TargetUnavailable{processIdentifier});
}

/// Elements come and go while a window is read, and what is missing is told. But a window that has gone as a whole left
/// nothing but names of what was there.
void requireLivingWindow(AccessibilitySession& session, const AccessibilityCaptureState& state,
                         AccessibilityElement application, AccessibilityElement root,
                         const WindowCaptureTarget& target) {
  const std::string goneCode = errorCodeName(AccessibilityErrorCode::invalidUIElement);
  if (std::ranges::count(state.issues(), goneCode, &AccessibilityCaptureIssue::code) == 0) return;
  if (session.processIdentifier(application) != target.processIdentifier) {
    throw AccessibilityCaptureError(AccessibilityCaptureError::TargetUnavailable{target.processIdentifier});
  }
  const auto owner = session.processIdentifier(root);
  if (!owner && owner.error() == AccessibilityErrorCode::invalidUIElement) {
    const AccessibilityWindowMatchFailure failure(AccessibilityWindowMatchFailure::NothingMatched{});
    throw AccessibilityCaptureError(AccessibilityCaptureError::TargetWindowUnavailable{
        target.processIdentifier, target.windowID, failure.explanation()});
  }
}

}  // namespace

AccessibilitySnapshot captureAccessibilitySnapshot(AccessibilityInterface& interface, WallClock& wallClock,
                                                   const AccessibilityCaptureConfiguration& configuration,
                                                   const WindowCaptureTarget& target,
                                                   const SharedAccessibilityCaptureControl& control) {
  control->checkpoint();
  if (target.processIdentifier < 1) {
    throw AccessibilityCaptureError(AccessibilityCaptureError::InvalidProcessIdentifier{target.processIdentifier});
  }
  if (!interface.isProcessTrusted(AccessibilityTrustPrompt::silent)) {
    throw AccessibilityCaptureError(AccessibilityCaptureError::AccessNotGranted{});
  }
  control->checkpoint();
  const std::unique_ptr<AccessibilitySession> platformSession = interface.makeSession(target, control);
  CheckpointingSession session(*platformSession, *control);
  AccessibilityCaptureState state(configuration, *control);

  const AccessibilityElement application = connect(session, target.processIdentifier);
  session.setMessagingTimeout(application, configuration.messagingTimeout);
  const auto focused = readAttribute(session, state, application, "AXFocusedUIElement", std::nullopt);
  AccessibilityRoot root = selectAccessibilityRoot(session, state, application, target);

  AccessibilityTreeWalk walk(session, state);
  walk.walk(root.element);
  captureCompleteDocumentText(session, state, walk.nodes(), walk.elements(), walk.documentAttributeNames());
  requireLivingWindow(session, state, application, root.element, target);

  AccessibilitySnapshot snapshot;
  snapshot.capturedAt = wallClock.now();
  snapshot.targetProcessIdentifier = target.processIdentifier;
  snapshot.rootKind = root.kind;
  if (const auto* element = focused ? std::get_if<AccessibilityElement>(&*focused) : nullptr) {
    snapshot.focusedNodeID = walk.idOf(*element);
  }
  snapshot.nodes = std::move(walk.nodes());
  snapshot.characterCount = state.characterCount();
  snapshot.truncations = state.truncations();
  snapshot.issues = state.issues();
  snapshot.deriveFields();

  if (root.note) snapshot.warnings.push_back(std::move(*root.note));
  for (std::string& warning : session.captureWarnings()) snapshot.warnings.push_back(std::move(warning));
  if (auto warning = AccessibilityAreaCoverage::warning(snapshot, target.windowFrame)) {
    snapshot.warnings.push_back(std::move(*warning));
  }
  if (state.droppedIssueCount() > 0) {
    snapshot.warnings.push_back(
        fmt::format("{} additional Accessibility capture issues were omitted.", state.droppedIssueCount()));
  }
  return snapshot;
}

}  // namespace quillo
