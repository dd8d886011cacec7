#pragma once

#include <cstdint>

#include "QuilloCore/Clipboard/ClipboardPayloadWriter.h"
#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Clipboard/PasteboardSession.h"

namespace quillo {

/// The session over the platform's clipboard. A clipboard out of reach has a change count that it never has otherwise,
/// gives an incomplete snapshot, rejects writes and fails to be restored, so that a delivery ends with what it says of
/// a clipboard that cannot be saved, or that somebody else has taken.
class SystemPasteboardSession final : public PasteboardSession {
 public:
  /// What `changeCount` says when the clipboard is out of reach.
  static constexpr std::uint64_t unreachableChangeCount = UINT64_MAX;

  /// Both outlive the session. What it writes is gone in a moment, unless it is said to be offered.
  SystemPasteboardSession(Pasteboard& pasteboard, ClipboardPayloadWriter& writer,
                          PasteboardUse use = PasteboardUse::borrowed)
      : pasteboard_(pasteboard), writer_(writer), use_(use) {}

  Task<std::uint64_t> changeCount() override;
  Task<PasteboardSnapshot> captureSnapshot() override;
  Task<ClipboardConditionalWriteResult> write(ClipboardPayload payload, ClipboardComposition composition,
                                              std::uint64_t ifUnchangedSince) override;
  Task<PasteboardConditionalRestoreResult> restore(PasteboardSnapshot snapshot,
                                                   std::uint64_t ifUnchangedSince) override;

 private:
  Pasteboard& pasteboard_;
  ClipboardPayloadWriter& writer_;
  PasteboardUse use_;
};

}  // namespace quillo
