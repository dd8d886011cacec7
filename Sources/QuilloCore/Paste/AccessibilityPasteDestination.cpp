#include "QuilloCore/Paste/AccessibilityPasteDestination.h"

#include <utility>

#include "QuilloCore/Concurrency/AsyncOperationDeadline.h"

namespace quillo {
namespace {

/// Past this an answer about the focus is of no use, whatever it is that hangs.
constexpr double questionDeadline = 1.0;

/// How long the keystroke waits for fingers that are on a key, and how often it looks.
constexpr double fingerPatience = 0.5;
constexpr double fingerPollInterval = 0.01;

template <class T>
Task<T> answer(std::function<T()> question) {
  co_return question();
}

/// What the function answers on the queue, or `otherwise` past the deadline.
template <class T>
Task<T> askInTime(MonotonicClock& clock, TaskExecutor executor, std::function<T()> question, T otherwise) {
  auto ask = [question = std::move(question)] { return answer(question); };
  auto asking = runCancellableAsyncOperation(clock, std::move(executor), questionDeadline, std::move(ask));
  try {
    co_return co_await std::move(asking);
  } catch (const AsyncOperationDeadlineError&) {
    co_return otherwise;
  }
}

}  // namespace

Task<bool> AccessibilityPasteDestination::isPermitted(AccessibilityTrustPrompt prompt) {
  return askInTime<bool>(providers_.clock, queue_.executor(), [this, prompt] { return isAllowed(prompt); }, false);
}

Task<std::optional<std::int32_t>> AccessibilityPasteDestination::frontmostProcessIdentifier() {
  const auto ask = [this]() -> std::optional<std::int32_t> {
    const auto focus = providers_.inputFocus.inputFocus();
    return focus ? std::optional(focus->processIdentifier) : std::nullopt;
  };
  return askInTime<std::optional<std::int32_t>>(providers_.clock, queue_.executor(), ask, std::nullopt);
}

Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> AccessibilityPasteDestination::resolveTarget(
    std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) {
  const auto ask = [this, processIdentifier, prompt] { return resolve(processIdentifier, prompt); };
  return askInTime<Resolution>(providers_.clock, queue_.executor(), ask,
                               std::unexpected(PasteTargetFreezeError::destinationUnavailable));
}

Task<bool> AccessibilityPasteDestination::isCurrent(FrozenPasteTarget target) {
  const auto ask = [this, target = std::move(target)] { return hasFocus(target); };
  return askInTime<bool>(providers_.clock, queue_.executor(), ask, false);
}

Task<PasteKeystrokeResult> AccessibilityPasteDestination::sendPaste(FrozenPasteTarget target) {
  // Without a deadline around it: keys must not be pressed when nobody waits for them any more.
  MonotonicClock& clock = providers_.clock;
  const std::uint64_t deadline = uptimeAfter(clock.uptimeNanoseconds(), fingerPatience);
  while (true) {
    auto press = [this, target] { return providers_.keystroke.send(target.keystroke, target.identity.inputFocus); };
    Task<PasteKeystrokeOutcome> pressing = queue_.run(std::move(press));
    const PasteKeystrokeOutcome outcome = co_await std::move(pressing);
    if (outcome == PasteKeystrokeOutcome::sent) co_return PasteKeystrokeResult::sent;
    if (outcome == PasteKeystrokeOutcome::focusMoved) co_return PasteKeystrokeResult::destinationChanged;
    if (outcome == PasteKeystrokeOutcome::failed) co_return PasteKeystrokeResult::failed;
    if (clock.uptimeNanoseconds() >= deadline) co_return PasteKeystrokeResult::failed;
    Task<> waiting = sleepFor(clock, fingerPollInterval);
    co_await std::move(waiting);
    // Whoever holds a key may be on the way to another field.
    Task<bool> checking = isCurrent(target);
    if (!co_await std::move(checking)) co_return PasteKeystrokeResult::destinationChanged;
  }
}

bool AccessibilityPasteDestination::isAllowed(AccessibilityTrustPrompt prompt) {
  return providers_.keystroke.isAllowed() && providers_.focusedElement.isAllowed(prompt);
}

AccessibilityPasteDestination::Resolution AccessibilityPasteDestination::resolve(std::int32_t processIdentifier,
                                                                                 AccessibilityTrustPrompt prompt) {
  const auto focus = providers_.inputFocus.inputFocus();
  if (!focus) return std::unexpected(PasteTargetFreezeError::destinationUnavailable);
  if (!isAllowed(prompt)) return std::unexpected(PasteTargetFreezeError::accessibilityPermissionRequired);
  if (focus->processIdentifier != processIdentifier) {
    return std::unexpected(PasteTargetFreezeError::destinationChanged);
  }
  const auto element = providers_.focusedElement.focusedElement(processIdentifier, messagingTimeout_);
  // A program that does not answer would read the clipboard when it no longer holds the capture.
  if (!element && element.error() == FocusedElementAbsence::noAnswer) {
    return std::unexpected(PasteTargetFreezeError::destinationUnavailable);
  }
  if (providers_.inputFocus.inputFocus() != focus) return std::unexpected(PasteTargetFreezeError::destinationChanged);

  FrozenPasteTarget target;
  target.processIdentifier = processIdentifier;
  target.identity.inputFocus = focus->window;
  if (element) target.identity.element = element->identity;
  const bool isTerminal = focus->isTerminal || (element && element->isTerminal);
  target.keystroke = isTerminal ? PasteKeystroke::controlShiftV : PasteKeystroke::controlV;
  return target;
}

bool AccessibilityPasteDestination::hasFocus(const FrozenPasteTarget& target) {
  const auto focus = providers_.inputFocus.inputFocus();
  if (!focus || focus->window != target.identity.inputFocus || focus->processIdentifier != target.processIdentifier) {
    return false;
  }
  return target.identity.element.empty() ||
         providers_.focusedElement.isFocused(target.identity.element, messagingTimeout_);
}

}  // namespace quillo
