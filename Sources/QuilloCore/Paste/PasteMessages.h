#pragma once

#include <string>
#include <string_view>

#include "QuilloCore/Paste/FrozenPasteTarget.h"
#include "QuilloCore/Paste/PasteDeliveryResult.h"

namespace quillo {

/// Everything that the user is told about pasting and copying.
namespace PasteMessages {
inline constexpr std::string_view delivered = "Screenshot, interface map, and note pasted";
inline constexpr std::string_view deliveredWithoutRestoring =
    "Capture pasted, but Quillo could not restore the previous clipboard";
inline constexpr std::string_view stoppedWithoutRestoring =
    "Paste stopped, and Quillo could not restore the previous clipboard";
inline constexpr std::string_view busy = "Another Quillo paste is still in progress";
inline constexpr std::string_view permissionRequired = "Quillo needs Accessibility access to paste here";
inline constexpr std::string_view focusDestination = "Focus an editable destination, then use ";  ///< and the shortcut
inline constexpr std::string_view destinationChangedAtStart =
    "The destination changed before Quillo could start pasting";
inline constexpr std::string_view destinationChanged = "The destination changed before Quillo could finish pasting";
inline constexpr std::string_view keystrokeFailed = "The destination did not accept the capture";
inline constexpr std::string_view releaseKeys = "Release the shortcut keys, then try pasting again";
inline constexpr std::string_view clipboardChanged = "The clipboard changed before Quillo could finish pasting";
inline constexpr std::string_view clipboardRejectedArtifact = "The clipboard rejected this artifact";
inline constexpr std::string_view clipboardRejectedPart = "The clipboard rejected part of this capture";
inline constexpr std::string_view clipboardNotPreservable = "The current clipboard cannot be preserved losslessly";
inline constexpr std::string_view openMenuFromDestination =
    "Open the Quillo menu from an editable destination, then choose Paste";
}  // namespace PasteMessages

/// Whether everything was pasted, whatever became of the clipboard.
bool isDelivered(const PasteDeliveryResult& result);

/// The message about a delivery.
std::string pasteMessage(const PasteDeliveryResult& result);

/// The message about a paste that could not begin; `shortcut` is how the user asks for it again.
std::string pasteMessage(PasteTargetFreezeError error, std::string_view shortcut);

}  // namespace quillo
