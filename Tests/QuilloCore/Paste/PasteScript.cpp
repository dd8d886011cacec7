#include "PasteScript.h"

#include <fmt/format.h>

#include <memory>
#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"

namespace quillo::test {

Timer ScriptClock::callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) {
  const double seconds = static_cast<double>(deadlineUptimeNanoseconds - uptime_) / 1e9;
  script_.record(fmt::format("pause {:.4g}", seconds));
  uptime_ = deadlineUptimeNanoseconds;
  queue_->post(std::move(job));
  return {};
}

Task<> ScriptClock::pass(double seconds) {
  uptime_ = uptimeAfter(uptime_, seconds);
  auto passed = std::make_shared<PendingResult<void>>();
  queue_->post([passed] { passed->resolve({}); });
  return waitFor(passed);
}

Task<std::uint64_t> ScriptPasteboard::changeCount() {
  co_return count;
}

Task<PasteboardSnapshot> ScriptPasteboard::captureSnapshot() {
  script_.record("snapshot");
  co_return saved;
}

Task<ClipboardConditionalWriteResult> ScriptPasteboard::write(ClipboardPayload /*payload*/,
                                                              ClipboardComposition composition,
                                                              std::uint64_t ifUnchangedSince) {
  using Kind = ClipboardConditionalWriteResult::Kind;
  script_.record(fmt::format("write {}", rawValue(composition)));
  if (count != ifUnchangedSince) co_return ClipboardConditionalWriteResult{Kind::changed, std::nullopt};
  ++count;
  if (!rejectsWrites) co_return ClipboardConditionalWriteResult{Kind::written, count};
  co_return ClipboardConditionalWriteResult{Kind::rejected,
                                            tellsCountOfRejection ? std::optional(count) : std::nullopt};
}

Task<PasteboardConditionalRestoreResult> ScriptPasteboard::restore(PasteboardSnapshot snapshot,
                                                                   std::uint64_t ifUnchangedSince) {
  script_.record("restore");
  if (count != ifUnchangedSince) co_return PasteboardConditionalRestoreResult::skippedBecauseClipboardChanged;
  if (failsToRestore) co_return PasteboardConditionalRestoreResult::failed;
  ++count;
  restored = std::move(snapshot);
  co_return PasteboardConditionalRestoreResult::restored;
}

Task<bool> ScriptDestination::isPermitted(AccessibilityTrustPrompt prompt) {
  if (prompt == AccessibilityTrustPrompt::askUser) script_.record("ask");
  co_return isAllowed;
}

Task<std::optional<std::int32_t>> ScriptDestination::frontmostProcessIdentifier() {
  co_return 42;
}

Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> ScriptDestination::resolveTarget(
    std::int32_t processIdentifier, AccessibilityTrustPrompt /*prompt*/) {
  script_.record(fmt::format("freeze {}", processIdentifier));
  co_return resolution;
}

Task<bool> ScriptDestination::isCurrent(FrozenPasteTarget /*target*/) {
  script_.record("focus?");
  co_return hasFocus;
}

Task<PasteKeystrokeResult> ScriptDestination::sendPaste(FrozenPasteTarget /*target*/) {
  script_.record("paste");
  co_return keystroke;
}

PhysicalModifierFlags ScriptModifiers::physicalModifierFlags() {
  if (heldReadings <= 0) return {};
  --heldReadings;
  return held;
}

Task<> ScriptModifiers::sleep(double seconds) {
  script_.record(fmt::format("sleep {:.4g}", seconds));
  Task<> passing = clock_.pass(seconds);
  co_await std::move(passing);
}

}  // namespace quillo::test
