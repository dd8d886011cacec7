#include "QuilloApp/Model/StatusMenu.h"

#include <utility>

#include "QuilloApp/Model/QuilloModel.h"

namespace quillo {
namespace {

using Action = StatusMenuAction;
using Entry = StatusMenuEntry;

Entry label(std::string text, std::string symbolName = {}) {
  return {std::move(text), std::move(symbolName), false, std::nullopt};
}

Entry item(std::string text, std::string symbolName, Action action, bool isEnabled = true) {
  return {std::move(text), std::move(symbolName), isEnabled, action};
}

Entry separator() {
  return {};
}

Entry statusLine(const Activity& activity) {
  switch (activity.kind) {
    case Activity::Kind::idle: return label("Ready", "checkmark.circle");
    case Activity::Kind::loading: return label("Loading artifacts…", "hourglass");
    case Activity::Kind::capturing: return label("Reading window and interface…", "hourglass");
    case Activity::Kind::saving: return label("Saving changes…", "hourglass");
    case Activity::Kind::pasting: return label("Pasting capture…", "hourglass");
    case Activity::Kind::success: return label(activity.message, "checkmark.circle");
    case Activity::Kind::failure: return label(activity.message, "exclamationmark.triangle");
  }
  return separator();
}

Entry permissionItem(ContextCapturePermission permission, bool isGranted) {
  const std::string name(displayName(permission));
  if (isGranted) return label(name + ": Allowed", "checkmark.shield");
  const bool isAccessibility = permission == ContextCapturePermission::accessibility;
  return item("Open " + name + " Settings", "exclamationmark.shield",
              isAccessibility ? Action::openAccessibilitySettings : Action::openScreenRecordingSettings);
}

std::optional<std::string> titleOfSelection(const QuilloModelState& state) {
  if (!state.selection) return std::nullopt;
  for (const StoredArtifact& artifact : state.artifacts) {
    if (artifact.manifest.id == *state.selection) return artifact.manifest.title;
  }
  return std::nullopt;
}

}  // namespace

StatusMenuState statusMenuState(const QuilloModel& model) {
  const QuilloModelState& state = model.state();
  StatusMenuState menu;
  menu.activity = state.activity;
  menu.hotKeyConfiguration = state.hotKeyConfiguration;
  menu.permissions = state.capturePermissionState;
  menu.selectedTitle = titleOfSelection(state);
  menu.canCapture = model.canCaptureFrontmostWindowFromMenu();
  menu.canPaste = model.canPasteSelectedArtifact();
  menu.canCheckForUpdates = state.softwareUpdates.canCheck();
  menu.isOnboardingCompleted = model.isOnboardingCompleted();
  return menu;
}

std::vector<StatusMenuEntry> rebuildStatusMenu(const StatusMenuState& state) {
  std::vector<Entry> entries;
  entries.push_back(label("Quillo", "square.stack.3d.up.fill"));
  entries.push_back(separator());

  entries.push_back(item("Capture Frontmost Window  " + state.hotKeyConfiguration.capture.displayString(), "viewfinder",
                         Action::captureFrontmostWindow, state.canCapture));
  entries.push_back(item("Paste Selected Capture  " + state.hotKeyConfiguration.paste.displayString(), "arrow.down.doc",
                         Action::pasteSelectedArtifact, state.canPaste));
  entries.push_back(separator());

  entries.push_back(statusLine(state.activity));
  entries.push_back(
      permissionItem(ContextCapturePermission::screenRecording, state.permissions.screenRecordingGranted));
  entries.push_back(permissionItem(ContextCapturePermission::accessibility, state.permissions.accessibilityGranted));
  entries.push_back(item("Recheck Capture Access", "arrow.clockwise", Action::recheckCaptureAccess));
  if (state.selectedTitle) entries.push_back(label("Selected: " + *state.selectedTitle));
  entries.push_back(separator());

  entries.push_back(
      item("Check for Updates…", "arrow.triangle.2.circlepath", Action::checkForUpdates, state.canCheckForUpdates));
  entries.push_back(item("Open Library", "rectangle.stack", Action::openLibrary));
  entries.push_back(state.isOnboardingCompleted ? item("Setup & Shortcuts…", "keyboard", Action::openSetup)
                                                : item("Finish Setup…", "checklist", Action::openSetup));
  entries.push_back(separator());

  entries.push_back(item("Quit Quillo", "power", Action::quit));
  return entries;
}

}  // namespace quillo
