#pragma once

#include <string_view>

#include "QuilloCore/Capture/AccessibilitySnapshot.h"

namespace quillo::test {

/// A capture from the notation of trees. Ids count the lines from 0; the first line is the root.
///
///     window 'Inbox' frame=0,0,400,300
///       button 'Reply' [focused] actions=AXPress,AXShowMenu
///       textArea text='Dear all' value='Dear' AXSelectedTextRange=0..4
///       group refs=1,99
///
/// A kind in small letters stands for the role "AX" with a capital letter (`text` is AXStaticText). The title is
/// AXTitle. The flags focused, selected, expanded, collapsed, disabled and protected, and the keys subrole, value,
/// help, description, label, placeholder, id, text (AXFullText), actions and frame name what they say; `refs` adds
/// child references. Any other key must be an attribute's name: true and false are booleans, "3" an integer, "3.5" a
/// number, "1..4" the range from 1 to 4, "a|b" a list, "<redacted>" a redacted value, everything else a text.
AccessibilitySnapshot makeSnapshot(std::string_view notation);

/// As a capture whose focused element is known.
AccessibilitySnapshot makeSnapshot(std::string_view notation, std::int64_t focusedNodeID);

}  // namespace quillo::test
