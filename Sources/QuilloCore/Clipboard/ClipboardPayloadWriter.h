#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QuilloCore/Clipboard/ClipboardComposition.h"
#include "QuilloCore/Clipboard/ClipboardPayload.h"
#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Concurrency/SerialQueue.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// Lays a payload out in clipboard items and writes them. Keeps nothing between writes; the items are made on a queue
/// of its own, so that whoever writes a long text is not held up.
class ClipboardPayloadWriter {
 public:
  /// Image item: PNG, TIFF (made of the PNG when asked for; left out when that is damaged), capture marker. Text item:
  /// text, HTML. Single item: PNG, text, HTML, capture marker.
  static std::vector<PasteboardItem> makeItems(const ClipboardPayload& payload, ClipboardComposition composition);

  /// A page that shows the text as it stands.
  static std::string htmlData(std::string_view plainText);

  Task<std::vector<PasteboardItem>> prepareItems(ClipboardPayload payload, ClipboardComposition composition);

  /// Replaces whatever is on the clipboard, for the user to paste; false when the clipboard rejects it. The pasteboard
  /// outlives the task. Throws PasteboardError.
  Task<bool> write(ClipboardPayload payload, ClipboardComposition composition, Pasteboard& pasteboard);

 private:
  SerialQueue queue_{"org.quillo.Quillo.clipboard"};
};

}  // namespace quillo
