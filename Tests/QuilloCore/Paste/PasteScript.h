#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Task.h"
#include "QuilloCore/Concurrency/TaskExecutor.h"
#include "QuilloCore/Paste/PasteDeliveryService.h"

namespace quillo::test {

/// What a delivery did, in order, as a text like "snapshot, write image-only, pause 0.18, paste". Events can be set to
/// happen just when the delivery does something: `on("pause 0.18", …)` the first time, "#2" behind it the second time.
class PasteScript {
 public:
  void on(const std::string& action, std::function<void()> event) { events_[action] = std::move(event); }

  void record(const std::string& action) {
    text_ += (text_.empty() ? "" : ", ") + action;
    const int count = ++counts_[action];
    const auto event = events_.find(count == 1 ? action : action + "#" + std::to_string(count));
    if (event != events_.end()) event->second();
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
  std::map<std::string, int> counts_;
  std::map<std::string, std::function<void()>> events_;
};

/// A clock on which every pause passes at once, and is recorded.
class ScriptClock final : public MonotonicClock {
 public:
  ScriptClock(PasteScript& script, const TaskExecutor& executor) : script_(script), queue_(executor.queue()) {}

  std::uint64_t uptimeNanoseconds() override { return uptime_; }
  Timer callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) override {
    script_.record(fmt::format("pause {:.4g}", static_cast<double>(deadlineUptimeNanoseconds - uptime_) / 1e9));
    uptime_ = deadlineUptimeNanoseconds;
    queue_->post(std::move(job));
    return {};
  }
  /// The same without a record.
  Task<> pass(double seconds) {
    uptime_ = uptimeAfter(uptime_, seconds);
    auto passed = std::make_shared<PendingResult<void>>();
    queue_->post([passed] { passed->resolve({}); });
    return waitFor(passed);
  }

 private:
  PasteScript& script_;
  std::shared_ptr<JobQueue> queue_;
  std::uint64_t uptime_ = 1'000'000'000;
};

/// A clipboard that others can write to, and that can refuse.
class ScriptPasteboard final : public PasteboardSession {
 public:
  explicit ScriptPasteboard(PasteScript& script) : script_(script) {}

  void changeByOther() { ++count; }

  Task<std::uint64_t> changeCount() override { co_return count; }
  Task<PasteboardSnapshot> captureSnapshot() override {
    script_.record("snapshot");
    co_return saved;
  }
  Task<ClipboardConditionalWriteResult> write(ClipboardPayload /*payload*/, ClipboardComposition composition,
                                              std::uint64_t ifUnchangedSince) override {
    using Kind = ClipboardConditionalWriteResult::Kind;
    script_.record(fmt::format("write {}", rawValue(composition)));
    if (count != ifUnchangedSince) co_return ClipboardConditionalWriteResult{Kind::changed, std::nullopt};
    ++count;
    if (!rejectsWrites) co_return ClipboardConditionalWriteResult{Kind::written, count};
    co_return ClipboardConditionalWriteResult{Kind::rejected,
                                              tellsCountOfRejection ? std::optional(count) : std::nullopt};
  }
  Task<PasteboardConditionalRestoreResult> restore(PasteboardSnapshot snapshot,
                                                   std::uint64_t ifUnchangedSince) override {
    script_.record("restore");
    if (count != ifUnchangedSince) co_return PasteboardConditionalRestoreResult::skippedBecauseClipboardChanged;
    if (failsToRestore) co_return PasteboardConditionalRestoreResult::failed;
    ++count;
    restored = std::move(snapshot);
    co_return PasteboardConditionalRestoreResult::restored;
  }

  std::uint64_t count = 7;
  PasteboardSnapshot saved{.items = {{.advertisedTypes = {"text/plain"}, .representations = {{"text/plain", "mine"}}}},
                           .unrepresentedTopLevelTypes = {}};
  bool rejectsWrites = false;
  bool tellsCountOfRejection = true;
  bool failsToRestore = false;
  PasteboardSnapshot restored;

 private:
  PasteScript& script_;
};

class ScriptDestination final : public PasteDestination {
 public:
  explicit ScriptDestination(PasteScript& script) : script_(script) {}

  Task<bool> isPermitted(AccessibilityTrustPrompt prompt) override {
    if (prompt == AccessibilityTrustPrompt::askUser) script_.record("ask");
    co_return isAllowed;
  }
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override { co_return 42; }
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt /*prompt*/) override {
    script_.record(fmt::format("freeze {}", processIdentifier));
    co_return resolution;
  }
  Task<bool> isCurrent(FrozenPasteTarget /*target*/) override {
    script_.record("focus?");
    co_return hasFocus;
  }
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget /*target*/) override {
    script_.record("paste");
    co_return keystroke;
  }

  bool isAllowed = true;
  bool hasFocus = true;
  std::expected<FrozenPasteTarget, PasteTargetFreezeError> resolution = FrozenPasteTarget{};
  PasteKeystrokeResult keystroke = PasteKeystrokeResult::sent;

 private:
  PasteScript& script_;
};

/// Keys that are held for so many readings, and a sleep that lets the time pass.
class ScriptModifiers final : public PhysicalModifierFlagsProviding, public ModifierReleaseSleeping {
 public:
  ScriptModifiers(PasteScript& script, ScriptClock& clock) : script_(script), clock_(clock) {}

  PhysicalModifierFlags physicalModifierFlags() override { return heldReadings-- > 0 ? held : PhysicalModifierFlags(); }
  Task<> sleep(double seconds) override {
    script_.record(fmt::format("sleep {:.4g}", seconds));
    return clock_.pass(seconds);
  }

  PhysicalModifierFlags held;
  int heldReadings = 0;

 private:
  PasteScript& script_;
  ScriptClock& clock_;
};

}  // namespace quillo::test
