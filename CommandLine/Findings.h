#pragma once

#include <string>
#include <vector>

namespace quillo {

/// One thing that the desktop offers or lacks.
struct Finding {
  std::string subject;
  std::string finding;
  std::string remedy;  ///< empty when nothing is to be done

  bool isGood() const { return remedy.empty(); }
};

/// Whether the display lets us press the keys that paste.
std::vector<Finding> examineKeystrokes();

/// Whether the settings can be read, and whether the two shortcuts in them can be reserved. Reserves each for a moment.
std::vector<Finding> examineShortcuts();

/// Whether the clipboard answers, and who else takes what is on it.
std::vector<Finding> examineClipboard();

}  // namespace quillo
