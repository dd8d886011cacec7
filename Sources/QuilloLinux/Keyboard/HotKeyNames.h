#pragma once

#include <string>

#include "QuilloCore/Shortcuts/QuilloHotKey.h"

namespace quillo {

/// The shortcut as the keys of a PC are labelled: "Control+Alt+Super+C".
std::string pcKeyNames(const QuilloHotKey& hotKey);

}  // namespace quillo
