#include "QuilloCore/Paste/PasteMessages.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo::test {
namespace {

using Kind = PasteDeliveryOutcome::Kind;

TEST(PasteMessages, everyOutcomeHasItsWords) {
  const std::vector<std::pair<Kind, std::string>> messages = {
      {Kind::delivered, "Screenshot, interface map, and note pasted"},
      {Kind::clipboardOwnershipLost, "The clipboard changed before Quillo could finish pasting"},
      {Kind::clipboardWriteFailed, "The clipboard rejected part of this capture"},
      {Kind::nativePasteFailed, "The destination did not accept the capture"},
      {Kind::rejectedBusy, "Another Quillo paste is still in progress"},
      {Kind::accessibilityPermissionRequired, "Quillo needs Accessibility access to paste here"},
      {Kind::destinationUnavailable, "The destination changed before Quillo could finish pasting"},
      {Kind::destinationChanged, "The destination changed before Quillo could finish pasting"},
      {Kind::shortcutReleaseTimedOut, "Release the shortcut keys, then try pasting again"},
      {Kind::clipboardSnapshotIncomplete, "The current clipboard cannot be preserved losslessly"},
  };
  for (const auto& [kind, message] : messages) {
    for (const auto restoration : {PasteClipboardRestoration::notNeeded, PasteClipboardRestoration::restored,
                                   PasteClipboardRestoration::skippedBecauseClipboardChanged}) {
      EXPECT_EQ(pasteMessage(PasteDeliveryResult{{.kind = kind}, restoration}), message);
    }
    EXPECT_EQ(pasteMessage(PasteDeliveryResult{{.kind = kind}, PasteClipboardRestoration::failed}),
              kind == Kind::delivered ? "Capture pasted, but Quillo could not restore the previous clipboard"
                                      : "Paste stopped, and Quillo could not restore the previous clipboard");
  }
  EXPECT_EQ(pasteMessage(PasteTargetFreezeError::destinationUnavailable, "Super+Alt+V"),
            "Focus an editable destination, then use Super+Alt+V");
  EXPECT_EQ(pasteMessage(PasteTargetFreezeError::destinationChanged, ""),
            "The destination changed before Quillo could start pasting");
}

}  // namespace
}  // namespace quillo::test
