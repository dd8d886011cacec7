#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "QuilloCore/Clipboard/PasteboardSession.h"
#include "QuilloCore/Clipboard/PasteboardSnapshot.h"
#include "QuilloCore/Concurrency/Task.h"

namespace quillo {

/// One thing that is put on the clipboard, in several forms.
struct PasteboardItem {
  std::vector<PasteboardRepresentation> representations;

  friend bool operator==(const PasteboardItem&, const PasteboardItem&) = default;
};

/// What contents are put on the clipboard for.
enum class PasteboardUse : std::uint8_t {
  offered,   ///< for the user to paste; texts under every name that programs ask for
  borrowed,  ///< as offered, but gone in a moment: managers are asked not to keep it
  restored,  ///< what was there before, with nothing added
};

/// What the owner of the clipboard gave out when all of it was asked for.
struct PasteboardReading {
  enum class Answer : std::uint8_t {
    given,
    refused,  ///< the owner has nothing under this type
    failed,   ///< it may have something, which did not come: no answer in time, torn off, too large
  };
  struct Type {
    PasteboardRepresentation content;  ///< only the type's name unless given
    Answer answer = Answer::given;

    friend bool operator==(const Type&, const Type&) = default;
  };

  std::vector<std::string> topLevelTypes;
  std::vector<std::vector<Type>> items;

  friend bool operator==(const PasteboardReading&, const PasteboardReading&) = default;
};

/// The platform's clipboard. Every operation throws PasteboardError when the platform is out of reach, waits for other
/// programs only within bounds of its own, and can be cancelled unless it says otherwise. Called from one thread, which
/// it does not block; outlives its tasks.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// The number of the clipboard's changes so far, those by this program included.
  virtual Task<std::uint64_t> changeCount() = 0;

  /// All that is on the clipboard now. A cancelled reading is abandoned.
  virtual Task<PasteboardReading> read() = 0;

  /// Clears the clipboard and writes the items as one. With a change count, nothing is touched unless the count is
  /// still that one, and nobody can write between the look at it and the clearing. Runs to its end when cancelled,
  /// because its caller has to know what became of the clipboard.
  virtual Task<ClipboardConditionalWriteResult> replaceContents(std::vector<PasteboardItem> items, PasteboardUse use,
                                                                std::optional<std::uint64_t> ifUnchangedSince) = 0;

  /// Waits until what we wrote is no longer what is on the clipboard; not at all when nothing of ours is.
  virtual Task<> untilReplaced() = 0;

  /// Before the program ends: leaves what it wrote to the desktop's clipboard manager. Returns whether there is one and
  /// it has taken over; otherwise the contents are lost with the program.
  virtual Task<bool> handOver() = 0;
};

}  // namespace quillo
