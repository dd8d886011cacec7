#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloApp/Model/Activity.h"
#include "QuilloCore/Capture/ContextCapturePermission.h"
#include "QuilloCore/Shortcuts/QuilloHotKeyConfiguration.h"

namespace quillo {

class QuilloModel;

/// What an item of the status menu does.
enum class StatusMenuAction : std::uint8_t {
  captureFrontmostWindow,
  pasteSelectedArtifact,
  openScreenRecordingSettings,
  openAccessibilitySettings,
  recheckCaptureAccess,
  checkForUpdates,
  openLibrary,
  openSetup,
  quit,
};

/// One item of the menu; without an action it is a title, a status line or a separator.
struct StatusMenuEntry {
  std::string text;        ///< empty for a separator
  std::string symbolName;  ///< empty where there is none
  bool isEnabled = false;
  std::optional<StatusMenuAction> action;

  bool isSeparator() const { return text.empty(); }

  friend bool operator==(const StatusMenuEntry&, const StatusMenuEntry&) = default;
};

/// Everything that the menu depends on.
struct StatusMenuState {
  Activity activity;
  QuilloHotKeyConfiguration hotKeyConfiguration;
  ContextCapturePermissionState permissions;
  std::optional<std::string> selectedTitle;  ///< absent when nothing is selected
  bool canCapture = false;
  bool canPaste = false;
  bool canCheckForUpdates = false;
  bool isOnboardingCompleted = false;

  friend bool operator==(const StatusMenuState&, const StatusMenuState&) = default;
};

StatusMenuState statusMenuState(const QuilloModel& model);

/// The items from top to bottom.
std::vector<StatusMenuEntry> rebuildStatusMenu(const StatusMenuState& state);

}  // namespace quillo
