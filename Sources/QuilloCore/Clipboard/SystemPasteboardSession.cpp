#include "QuilloCore/Clipboard/SystemPasteboardSession.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "QuilloCore/Clipboard/PasteboardError.h"

namespace quillo {
namespace {

using WriteResult = ClipboardConditionalWriteResult;
using RestoreResult = PasteboardConditionalRestoreResult;

PasteboardSnapshot::Item snapshotOf(std::vector<PasteboardReading::Type> types) {
  PasteboardSnapshot::Item item;
  for (PasteboardReading::Type& type : types) {
    if (type.answer == PasteboardReading::Answer::refused) continue;
    item.advertisedTypes.push_back(type.content.type);
    if (type.answer == PasteboardReading::Answer::given) item.representations.push_back(std::move(type.content));
  }
  return item;
}

PasteboardSnapshot snapshotOf(PasteboardReading reading) {
  PasteboardSnapshot snapshot;
  for (std::vector<PasteboardReading::Type>& types : reading.items)
    snapshot.items.push_back(snapshotOf(std::move(types)));
  // An owner that advertises and then refuses everything has not given out an item either.
  const bool hasContent = std::ranges::any_of(
      snapshot.items, [](const PasteboardSnapshot::Item& item) { return !item.advertisedTypes.empty(); });
  if (!hasContent) snapshot = {.items = {}, .unrepresentedTopLevelTypes = std::move(reading.topLevelTypes)};
  return snapshot;
}

}  // namespace

Task<std::uint64_t> SystemPasteboardSession::changeCount() {
  try {
    Task<std::uint64_t> counting = pasteboard_.changeCount();
    co_return co_await std::move(counting);
  } catch (const PasteboardError&) {
    co_return unreachableChangeCount;
  }
}

Task<PasteboardSnapshot> SystemPasteboardSession::captureSnapshot() {
  try {
    Task<PasteboardReading> reading = pasteboard_.read();
    co_return snapshotOf(co_await std::move(reading));
  } catch (const PasteboardError& error) {
    co_return PasteboardSnapshot{.items = {}, .unrepresentedTopLevelTypes = {error.errorDescription()}};
  }
}

Task<WriteResult> SystemPasteboardSession::write(ClipboardPayload payload, ClipboardComposition composition,
                                                 std::uint64_t ifUnchangedSince) {
  try {
    Task<std::uint64_t> counting = pasteboard_.changeCount();
    const std::uint64_t count = co_await std::move(counting);
    if (count != ifUnchangedSince) co_return WriteResult{WriteResult::Kind::changed, count};
    Task<std::vector<PasteboardItem>> preparing = writer_.prepareItems(std::move(payload), composition);
    std::vector<PasteboardItem> items = co_await std::move(preparing);
    Task<WriteResult> writing = pasteboard_.replaceContents(std::move(items), use_, ifUnchangedSince);
    co_return co_await std::move(writing);
  } catch (const PasteboardError&) {
    co_return WriteResult{WriteResult::Kind::rejected, std::nullopt};
  }
}

Task<RestoreResult> SystemPasteboardSession::restore(PasteboardSnapshot snapshot, std::uint64_t ifUnchangedSince) {
  try {
    Task<std::uint64_t> counting = pasteboard_.changeCount();
    if (co_await std::move(counting) != ifUnchangedSince) co_return RestoreResult::skippedBecauseClipboardChanged;
    if (!snapshot.isComplete()) co_return RestoreResult::failed;
    std::vector<PasteboardItem> items;
    items.reserve(snapshot.items.size());
    for (PasteboardSnapshot::Item& item : snapshot.items) items.push_back({std::move(item.representations)});
    Task<WriteResult> writing =
        pasteboard_.replaceContents(std::move(items), PasteboardUse::restored, ifUnchangedSince);
    const WriteResult result = co_await std::move(writing);
    if (result.kind == WriteResult::Kind::changed) co_return RestoreResult::skippedBecauseClipboardChanged;
    co_return result.kind == WriteResult::Kind::written ? RestoreResult::restored : RestoreResult::failed;
  } catch (const PasteboardError&) {
    co_return RestoreResult::failed;
  }
}

}  // namespace quillo
