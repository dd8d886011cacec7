#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "QuilloCore/Concurrency/JobQueue.h"
#include "QuilloCore/Concurrency/MonotonicClock.h"
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
  Timer callAt(std::uint64_t deadlineUptimeNanoseconds, Job job) override;
  /// The same without a record.
  Task<> pass(double seconds);

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

  Task<std::uint64_t> changeCount() override;
  Task<PasteboardSnapshot> captureSnapshot() override;
  Task<ClipboardConditionalWriteResult> write(ClipboardPayload payload, ClipboardComposition composition,
                                              std::uint64_t ifUnchangedSince) override;
  Task<PasteboardConditionalRestoreResult> restore(PasteboardSnapshot snapshot,
                                                   std::uint64_t ifUnchangedSince) override;

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

  Task<bool> isPermitted(AccessibilityTrustPrompt prompt) override;
  Task<std::optional<std::int32_t>> frontmostProcessIdentifier() override;
  Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> resolveTarget(
      std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) override;
  Task<bool> isCurrent(FrozenPasteTarget target) override;
  Task<PasteKeystrokeResult> sendPaste(FrozenPasteTarget target) override;

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

  PhysicalModifierFlags physicalModifierFlags() override;
  Task<> sleep(double seconds) override;

  PhysicalModifierFlags held;
  int heldReadings = 0;

 private:
  PasteScript& script_;
  ScriptClock& clock_;
};

}  // namespace quillo::test
