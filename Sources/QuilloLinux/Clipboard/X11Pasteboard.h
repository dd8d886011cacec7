#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloLinux/Clipboard/X11SelectionReader.h"

namespace quillo {

/// The display's CLIPBOARD selection, on a connection and a thread of its own, which sleeps until something happens.
/// The display is reached for when the pasteboard is first used; changes are counted from then on. What was written is
/// offered for as long as this exists.
///
/// The selection has no items: the first item that offers a type gives it, and all that is read is one item.
class X11Pasteboard final : public Pasteboard {
 public:
  explicit X11Pasteboard(X11SelectionLimits limits = {});
  X11Pasteboard(const X11Pasteboard&) = delete;
  X11Pasteboard& operator=(const X11Pasteboard&) = delete;
  ~X11Pasteboard() override;

  Task<std::uint64_t> changeCount() override;
  Task<PasteboardReading> read() override;
  Task<ClipboardConditionalWriteResult> replaceContents(std::vector<PasteboardItem> items, PasteboardUse use,
                                                        std::optional<std::uint64_t> ifUnchangedSince) override;
  Task<> untilReplaced() override;
  Task<bool> handOver() override;

 private:
  class Thread;

  Thread& thread();

  X11SelectionLimits limits_;
  std::mutex lock_;
  std::unique_ptr<Thread> thread_;
};

}  // namespace quillo
