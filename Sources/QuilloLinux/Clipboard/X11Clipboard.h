#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloLinux/Clipboard/X11SelectionDisplay.h"
#include "QuilloLinux/Clipboard/X11SelectionOwner.h"
#include "QuilloLinux/Clipboard/X11SelectionReader.h"

namespace quillo {

/// The CLIPBOARD selection as one thread sees it: counts its changes of owner, owns it, reads it, hands it over. What
/// has to wait for another program resolves a result when an event has brought it. Operations throw PasteboardError
/// when the display is gone.
class X11Clipboard {
 public:
  using Clock = std::chrono::steady_clock;

  /// The change count begins at `firstChangeCount`.
  X11Clipboard(X11SelectionLimits limits, std::uint64_t firstChangeCount)
      : reader_(display_, limits), changeCount_(firstChangeCount) {}

  int fileDescriptor() const;
  bool isLost() const { return display_.isLost(); }

  /// As of the last event that was handled; asks nobody.
  std::uint64_t knownChangeCount() const { return changeCount_; }

  /// Acts on all events that have arrived; returns whether there were any.
  bool handleEvents();
  void flush();

  std::optional<Clock::time_point> deadline() const;
  void checkTime(Clock::time_point now);

  /// Every change so far, as one round trip to the display brings them all.
  std::uint64_t changeCount();
  ClipboardConditionalWriteResult replaceContents(std::vector<PasteboardItem> items, PasteboardUse use,
                                                  std::optional<std::uint64_t> ifUnchangedSince);
  void read(X11SelectionReader::Result result);
  /// Resolves when the clipboard is not ours.
  void awaitReplacement(std::shared_ptr<PendingResult<void>> result);
  /// Asks the clipboard's manager to take over what we own; resolves with whether it did.
  void handOver(std::shared_ptr<PendingResult<bool>> result);

  /// Forgets what nobody waits for any more.
  void prune();
  /// Ends everything that waits.
  void failAll(const std::exception_ptr& error);

 private:
  /// A manager that takes longer is not waited for.
  static constexpr std::chrono::seconds longestHandOver{5};

  void handle(const xcb_generic_event_t& event);
  void handleOwnerChange(std::uint32_t owner);
  void synchronize();
  std::uint32_t serverTime();
  bool isOurs() const { return isOurs_; }
  void beginNextReading();
  void requireDisplay() const;

  X11SelectionDisplay display_;
  X11SelectionOwner owner_{display_};
  X11SelectionReader reader_;
  std::uint64_t changeCount_;
  std::uint32_t serverTime_ = 0;
  bool isOurs_ = false;
  PasteboardUse use_ = PasteboardUse::offered;
  std::vector<X11SelectionReader::Result> waitingReaders_;
  std::vector<std::shared_ptr<PendingResult<void>>> waitingForReplacement_;
  std::shared_ptr<PendingResult<bool>> handOver_;
  Clock::time_point handOverDeadline_;
};

}  // namespace quillo
