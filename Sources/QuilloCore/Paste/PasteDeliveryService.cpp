#include "QuilloCore/Paste/PasteDeliveryService.h"

#include <utility>

#include "QuilloCore/Concurrency/PendingResult.h"
#include "QuilloCore/Concurrency/Suspension.h"
#include "QuilloCore/Paste/PasteDelivery.h"

namespace quillo {
namespace {

using DeliveryEnd = std::shared_ptr<PendingResult<PasteDeliveryResult>>;

Task<> runToEnd(std::shared_ptr<PasteDelivery> delivery, DeliveryEnd end) {
  Task<Outcome<PasteDeliveryResult>> running = outcomeOf(delivery->run());
  end->resolve(co_await std::move(running));
}

Task<> reportTo(std::move_only_function<void(PasteDeliveryResult)> completion, Task<PasteDeliveryResult> delivering) {
  completion(co_await std::move(delivering));
}

}  // namespace

const PasteDeliveryService::Configuration PasteDeliveryService::Configuration::immediate = {0, 0, 0, 0, 0};

PasteDeliveryService::PasteDeliveryService(const Collaborators& collaborators, TaskExecutor executor,
                                           const Configuration& configuration)
    : collaborators_(collaborators), executor_(std::move(executor)), configuration_(configuration) {}

Task<PasteDeliveryResult> PasteDeliveryService::deliver(ClipboardPayload payload, FrozenPasteTarget target,
                                                        AccessibilityTrustPrompt prompt) {
  return runDelivery(
      std::make_shared<PasteDelivery>(collaborators_, configuration_, std::move(payload), std::move(target), prompt));
}

Task<PasteDeliveryResult> PasteDeliveryService::deliver(ClipboardPayload payload, std::int32_t processIdentifier,
                                                        AccessibilityTrustPrompt prompt) {
  return runDelivery(
      std::make_shared<PasteDelivery>(collaborators_, configuration_, std::move(payload), processIdentifier, prompt));
}

TaskHandle PasteDeliveryService::deliver(ClipboardPayload payload, const FrozenPasteTarget& target,
                                         AccessibilityTrustPrompt prompt,
                                         std::move_only_function<void(PasteDeliveryResult)> completion) {
  auto body = [this, payload = std::move(payload), target, prompt, completion = std::move(completion)]() mutable {
    return reportTo(std::move(completion), deliver(std::move(payload), target, prompt));
  };
  return startTask(executor_, std::move(body));
}

Task<PasteDeliveryResult> PasteDeliveryService::runDelivery(std::shared_ptr<PasteDelivery> delivery) {
  PasteDeliveryExclusion* exclusion = collaborators_.exclusion;
  if (isDelivering_ || (exclusion != nullptr && !exclusion->enter())) {
    co_return PasteDeliveryResult{{.kind = PasteDeliveryOutcome::Kind::rejectedBusy}};
  }
  isDelivering_ = true;
  // A task of its own, so that cancelling the one that waits cannot tear it off in the middle of a step.
  auto end = std::make_shared<PendingResult<PasteDeliveryResult>>();
  startTask(executor_, [delivery, end] { return runToEnd(delivery, end); });
  auto install = [end](Job resume) { end->install(std::move(resume)); };
  auto cancel = [delivery] { delivery->cancel(); };
  Task<> suspension = suspendUntilResumed(install, cancel);
  co_await std::move(suspension);
  isDelivering_ = false;
  if (exclusion != nullptr) exclusion->leave();
  co_return end->take();
}

Task<std::optional<FrozenPasteTarget>> PasteDeliveryService::freezeTarget(std::int32_t processIdentifier) {
  auto resolving = resolveTarget(processIdentifier, AccessibilityTrustPrompt::silent);
  auto resolved = co_await std::move(resolving);
  co_return resolved ? std::optional(std::move(*resolved)) : std::nullopt;
}

Task<std::expected<FrozenPasteTarget, PasteTargetFreezeError>> PasteDeliveryService::resolveTarget(
    std::int32_t processIdentifier, AccessibilityTrustPrompt prompt) {
  return collaborators_.destination.resolveTarget(processIdentifier, prompt);
}

Task<std::optional<std::int32_t>> PasteDeliveryService::captureFrontmostDestinationProcessIdentifier() {
  return collaborators_.destination.frontmostProcessIdentifier();
}

}  // namespace quillo
