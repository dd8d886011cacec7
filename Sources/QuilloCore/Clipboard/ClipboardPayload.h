#pragma once

#include <string>

#include "QuilloCore/Support/UUID.h"

namespace quillo {

/// What a capture puts on the clipboard.
struct ClipboardPayload {
  UUID captureID;         ///< of the artifact
  std::string pngData;    ///< the bytes of the screenshot as the bundle holds them
  std::string plainText;  ///< the paste text

  friend bool operator==(const ClipboardPayload&, const ClipboardPayload&) = default;
};

}  // namespace quillo
