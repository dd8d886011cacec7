#pragma once

#include <cstdint>
#include <optional>

#include "QuilloCore/Clipboard/ClipboardComposition.h"
#include "QuilloCore/Clipboard/ClipboardPayload.h"
#include "QuilloCore/Clipboard/PasteboardSnapshot.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// What became of a write that was to happen only on an unchanged clipboard.
struct ClipboardConditionalWriteResult {
  enum class Kind : std::uint8_t {
    written,   ///< with the change count after the write
    changed,   ///< somebody else had written: nothing was touched
    rejected,  ///< refused after the clipboard had been cleared, with the change count then where it is known
  };
  Kind kind = Kind::changed;
  std::optional<std::uint64_t> changeCount;

  friend bool operator==(const ClipboardConditionalWriteResult&, const ClipboardConditionalWriteResult&) = default;
};

enum class PasteboardConditionalRestoreResult : std::uint8_t { restored, skippedBecauseClipboardChanged, failed };

/// The clipboard as a delivery borrows it. Every operation that writes is conditional on the change count, so that
/// nothing that anybody put there meanwhile is ever overwritten. Operations report and never throw, but for
/// OperationCancelled; they are called from one thread and do not block it.
class PasteboardSession {
 public:
  virtual ~PasteboardSession() = default;

  /// The number of the clipboard's changes of owner so far.
  virtual Task<std::uint64_t> changeCount() = 0;

  virtual Task<PasteboardSnapshot> captureSnapshot() = 0;

  virtual Task<ClipboardConditionalWriteResult> write(ClipboardPayload payload, ClipboardComposition composition,
                                                      std::uint64_t ifUnchangedSince) = 0;

  virtual Task<PasteboardConditionalRestoreResult> restore(PasteboardSnapshot snapshot,
                                                           std::uint64_t ifUnchangedSince) = 0;
};

}  // namespace quillo
