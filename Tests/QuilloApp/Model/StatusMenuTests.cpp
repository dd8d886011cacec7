#include "QuilloApp/Model/StatusMenu.h"

#include <gtest/gtest.h>

#include <string>

namespace quillo::test {
namespace {

/// One line an entry: its symbol and text, in parentheses when it cannot be chosen.
std::string textOf(const std::vector<StatusMenuEntry>& entries) {
  std::string text;
  for (const StatusMenuEntry& entry : entries) {
    const std::string line = entry.symbolName.empty() ? entry.text : "[" + entry.symbolName + "] " + entry.text;
    text += entry.isSeparator() ? "---" : (entry.isEnabled && entry.action ? line : "(" + line + ")");
    text += '\n';
  }
  return text;
}

StatusMenuState quietState() {
  StatusMenuState state;
  state.hotKeyConfiguration = QuilloHotKeyConfiguration::defaults();
  state.canCapture = true;
  state.permissions = {.screenRecordingGranted = true, .accessibilityGranted = true};
  state.isOnboardingCompleted = true;
  return state;
}

TEST(StatusMenu, saysWhatCanBeDone) {
  EXPECT_EQ(textOf(rebuildStatusMenu(quietState())),
            "([square.stack.3d.up.fill] Quillo)\n"
            "---\n"
            "[viewfinder] Capture Frontmost Window  ⌃⌥⌘C\n"
            "([arrow.down.doc] Paste Selected Capture  ⌃⌥⌘V)\n"
            "---\n"
            "([checkmark.circle] Ready)\n"
            "([checkmark.shield] Screen Recording: Allowed)\n"
            "([checkmark.shield] Accessibility: Allowed)\n"
            "[arrow.clockwise] Recheck Capture Access\n"
            "---\n"
            "([arrow.triangle.2.circlepath] Check for Updates…)\n"
            "[rectangle.stack] Open Library\n"
            "[keyboard] Setup & Shortcuts…\n"
            "---\n"
            "[power] Quit Quillo\n");

  StatusMenuState state = quietState();
  state.activity = Activity::failure("Artifact schema version 5 is not supported.");
  state.permissions = {};
  state.selectedTitle = "Letter";
  state.canCapture = false;
  state.canPaste = true;
  state.canCheckForUpdates = true;
  state.isOnboardingCompleted = false;
  EXPECT_EQ(textOf(rebuildStatusMenu(state)),
            "([square.stack.3d.up.fill] Quillo)\n"
            "---\n"
            "([viewfinder] Capture Frontmost Window  ⌃⌥⌘C)\n"
            "[arrow.down.doc] Paste Selected Capture  ⌃⌥⌘V\n"
            "---\n"
            "([exclamationmark.triangle] Artifact schema version 5 is not supported.)\n"
            "[exclamationmark.shield] Open Screen Recording Settings\n"
            "[exclamationmark.shield] Open Accessibility Settings\n"
            "[arrow.clockwise] Recheck Capture Access\n"
            "(Selected: Letter)\n"
            "---\n"
            "[arrow.triangle.2.circlepath] Check for Updates…\n"
            "[rectangle.stack] Open Library\n"
            "[checklist] Finish Setup…\n"
            "---\n"
            "[power] Quit Quillo\n");
}

TEST(StatusMenu, tellsEveryActivity) {
  using Kind = Activity::Kind;
  const std::vector<std::pair<Activity, std::string>> cases = {
      {{Kind::loading, {}}, "([hourglass] Loading artifacts…)"},
      {{Kind::capturing, {}}, "([hourglass] Reading window and interface…)"},
      {{Kind::saving, {}}, "([hourglass] Saving changes…)"},
      {{Kind::pasting, {}}, "([hourglass] Pasting capture…)"},
      {Activity::success("Artifact moved to Trash"), "([checkmark.circle] Artifact moved to Trash)"},
  };
  for (const auto& [activity, line] : cases) {
    StatusMenuState state = quietState();
    state.activity = activity;
    EXPECT_EQ(textOf({rebuildStatusMenu(state)[5]}), line + "\n");
  }
}

}  // namespace
}  // namespace quillo::test
