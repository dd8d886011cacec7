#pragma once

#include <string>

#include "CommandLibrary.h"
#include "QuilloCore/Clipboard/ClipboardPayload.h"

namespace quillo {

/// What the artifact that the user has named puts on the clipboard. Throws what finding and loading throw.
ClipboardPayload loadPayload(const std::string& artifact, CommandLibrary& library);

}  // namespace quillo
