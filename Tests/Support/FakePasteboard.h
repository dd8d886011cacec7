#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QuilloCore/Clipboard/Pasteboard.h"
#include "QuilloCore/Clipboard/PasteboardError.h"
#include "QuilloCore/Clipboard/TIFFImageConversion.h"

namespace quillo::test {

/// A clipboard in memory, with items as they were written. Faults are set by the test.
class FakePasteboard final : public Pasteboard {
 public:
  /// What another program would do: takes the clipboard.
  void replaceFromOutside(PasteboardReading reading) {
    contents = std::move(reading);
    use.reset();
    ++count;
  }

  Task<std::uint64_t> changeCount() override {
    failIfUnreachable();
    log.emplace_back("count");
    co_return count;
  }

  Task<PasteboardReading> read() override {
    failIfUnreachable();
    log.emplace_back("read");
    co_return contents;
  }

  Task<ClipboardConditionalWriteResult> replaceContents(std::vector<PasteboardItem> items, PasteboardUse newUse,
                                                        std::optional<std::uint64_t> ifUnchangedSince) override {
    using Kind = ClipboardConditionalWriteResult::Kind;
    failIfUnreachable();
    if (beforeReplacing) beforeReplacing();
    log.emplace_back(items.empty() ? "clear" : "write");
    if (ifUnchangedSince && *ifUnchangedSince != count) {
      co_return ClipboardConditionalWriteResult{Kind::changed, count};
    }
    contents = {};
    use.reset();
    ++count;
    if (rejectsWrites) co_return ClipboardConditionalWriteResult{Kind::rejected, count};
    if (!items.empty()) ++count;
    use = newUse;
    for (PasteboardItem& item : items) {
      auto& types = contents.items.emplace_back();
      for (PasteboardRepresentation& representation : item.representations) {
        contents.topLevelTypes.push_back(representation.type);
        if (std::exchange(representation.conversion, {}) == PasteboardConversion::tiffFromPNG)
          representation.data = TIFFImageConversion::fromPNG(representation.data).value();
        types.push_back({.content = std::move(representation)});
      }
    }
    co_return ClipboardConditionalWriteResult{Kind::written, count};
  }

  /// At once: the test has replaced them before it waits.
  Task<> untilReplaced() override {
    failIfUnreachable();
    log.emplace_back("untilReplaced");
    co_return;
  }

  Task<bool> handOver() override {
    failIfUnreachable();
    log.emplace_back("handOver");
    co_return false;
  }

  PasteboardReading contents;
  std::optional<PasteboardUse> use;  ///< what our contents are for; nothing for those of others
  std::uint64_t count = 1;
  std::vector<std::string> log;  ///< what was asked
  bool rejectsWrites = false;
  std::optional<PasteboardError> error;  ///< thrown by every operation
  std::function<void()> beforeReplacing;

 private:
  void failIfUnreachable() const {
    if (error) throw PasteboardError(*error);
  }
};

}  // namespace quillo::test
